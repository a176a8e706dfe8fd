#include "platform/Display.h"
#include "platform/HelpFile.h"
#include "platform/RecentDocuments.h"
#include "platform/SoundDevices.h"
#include "platform/TickCount.h"
#include "platform/UserSettings.h"
#include "platform/WindowLock.h"
#include "support/KavoriTest.h"

#include <QFileInfo>

using namespace kavori;

class PlatformTest : public kavori::test::KavoriTest {};

TEST_F(PlatformTest, UserSettingsKeepValuesPerSectionAndUser)
{
    EXPECT_EQ(
        GetSetting(QStringLiteral("Settings"), QStringLiteral("ProgramRun"), QStringLiteral("0")),
        "0");
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("ProgramRun"), QStringLiteral("1"));
    SaveSetting(QStringLiteral("Runtime"), QStringLiteral("EXEPath"), QStringLiteral("/opt/k/"));
    EXPECT_EQ(GetSetting(QStringLiteral("Settings"), QStringLiteral("ProgramRun")), "1");
    EXPECT_EQ(GetSetting(QStringLiteral("Runtime"), QStringLiteral("EXEPath")), "/opt/k/");
    EXPECT_EQ(GetSetting(QStringLiteral("Settings"), QStringLiteral("EXEPath")), "");
    // Stored under the user's configuration folder, application "Kavorix".
    EXPECT_TRUE(QFileInfo(root() + QStringLiteral("home/.config/Kavorix/Kavorix.conf")).isFile());
    DeleteSetting(QStringLiteral("Runtime"), QStringLiteral("EXEPath"));
    EXPECT_EQ(GetSetting(QStringLiteral("Runtime"), QStringLiteral("EXEPath"), QStringLiteral("-")),
              "-");
}

TEST_F(PlatformTest, WindowLocksStandForFindingAWindowByTitle)
{
    const QString title = QStringLiteral("Screen Saver Main Form");
    EXPECT_FALSE(WindowLock::Exists(title));
    {
        WindowLock first(title);
        EXPECT_TRUE(first.isHeld());
        EXPECT_TRUE(WindowLock::Exists(title));
        WindowLock second(title);
        EXPECT_FALSE(second.isHeld());
        EXPECT_FALSE(WindowLock::Exists(QStringLiteral("Kavori - [Screen Saver Settings]")));
    }
    EXPECT_FALSE(WindowLock::Exists(title));
}

TEST_F(PlatformTest, DisplayDepthSoundDevicesClockAndHelp)
{
    SetDisplayColorDepthOverride(8);
    EXPECT_EQ(DisplayColorDepth(), 8);
    SetDisplayColorDepthOverride(0);
    EXPECT_GE(DisplayColorDepth(), 1);

    SetSoundDevicesOverride(false, true);
    EXPECT_FALSE(DetectWaveDevices());
    EXPECT_TRUE(DetectMidiDevices());
    SetSoundDevicesOverride(std::nullopt, std::nullopt);
    qputenv("KAVORI_SOUNDFONT", QFile::encodeName(root() + QStringLiteral("none.sf2")));
    EXPECT_EQ(SoundFontPath(), "");
    EXPECT_FALSE(DetectMidiDevices());
    const QString font = writeFile(QStringLiteral("gm.sf2"), "RIFF");
    qputenv("KAVORI_SOUNDFONT", QFile::encodeName(font));
    EXPECT_EQ(DetectMidiDevices(), DetectWaveDevices()); // a font alone has nowhere to play
    qunsetenv("KAVORI_SOUNDFONT");

    const qint64 a = GetTickCount();
    const qint64 b = GetTickCount();
    EXPECT_GE(b, a);

    EXPECT_EQ(HelpPagePath(), home() + QStringLiteral("Help/index.html"));
    EXPECT_EQ(HelpPagePath(QStringLiteral("no-such-topic")),
              home() + QStringLiteral("Help/index.html"));
}

TEST_F(PlatformTest, RecentDocumentsKeepOtherProgramsEntries)
{
    const QString list = RecentDocumentsPath();
    EXPECT_EQ(list, root() + QStringLiteral("home/.local/share/recently-used.xbel"));
    writeFile(
        list,
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<xbel version=\"1.0\" xmlns:bookmark=\"http://www.freedesktop.org/standards/desktop-bookmarks\" "
        "xmlns:mime=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
        "<bookmark href=\"file:///docs/letter.txt\" added=\"2026-01-01T00:00:00Z\"><info><metadata "
        "owner=\"http://freedesktop.org\"><mime:mime-type type=\"text/plain\"/><bookmark:applications>"
        "<bookmark:application name=\"gedit\" exec=\"'gedit %u'\" count=\"3\"/></bookmark:applications>"
        "</metadata></info></bookmark>\n</xbel>\n");
    const QString picture = writeFile(QStringLiteral("my pics/a b.jpg"), "x");
    ASSERT_TRUE(AddToRecentDocuments(picture));
    ASSERT_TRUE(AddToRecentDocuments(picture));
    const QString text = QString::fromUtf8(readFile(list));
    EXPECT_TRUE(text.contains("file:///docs/letter.txt"));
    EXPECT_TRUE(text.contains("name=\"gedit\""));
    EXPECT_EQ(text.count("my%20pics/a%20b.jpg"), 1);
    EXPECT_TRUE(text.contains("name=\"Kavori\""));
    EXPECT_TRUE(text.contains("count=\"2\""));
    // A damaged list is started afresh rather than refused.
    writeFile(list, "<xbel><bookmark");
    EXPECT_TRUE(AddToRecentDocuments(picture));
    EXPECT_FALSE(AddToRecentDocuments(QStringLiteral("relative.jpg")));
}
