#include "XScreenSaverDefaults.h"
#include "support/KavoriTest.h"
#include "systemsaver/ProfileSaver.h"
#include "systemsaver/XScreenSaverFile.h"
#include "systemsaver/XScreenSaverSaver.h"

#include <QDir>
#include <QFile>
#include <QSettings>

using namespace kavori;

namespace {

class ProfileSaverTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        places.windowsFolder = root() + QStringLiteral("/Windows");
        places.systemFolder = root() + QStringLiteral("/Windows/System Files With A Long Name");
        places.desktopValues = root() + QStringLiteral("/desktop.ini");
        places.setActive = [this](bool on) { activeCalls.append(on); };
        QDir().mkpath(places.systemFolder);
    }
    QString systemIni() const { return places.windowsFolder + QStringLiteral("/SYSTEM.INI"); }

    ProfilePlaces places;
    QList<bool> activeCalls;
};

} // namespace

TEST_F(ProfileSaverTest, MakeCurrentWritesTheShortPathAndKeepsEveryOtherLine)
{
    const QByteArray before = "[boot]\r\nshell=Explorer.exe\r\nsystem.drv=system.drv\r\n"
                              "SCRNSAVE.EXE=C:\\WINDOWS\\SYSTEM\\MYSTIF~1.SCR\r\n"
                              "\r\n[386Enh]\r\ndevice=*vpicd, *vtd\r\n; a comment, kept\r\n";
    writeFile(QStringLiteral("Windows/SYSTEM.INI"), before);
    ProfileSaver saver(places);
    EXPECT_EQ(saver.CurrentSaverName(), "MYSTIF~1");

    // No module: the message, and SYSTEM.INI as it was.
    const QString module = saver.modulePath();
    EXPECT_EQ(saver.MakeCurrent(),
              QStringLiteral("An error occurred while trying to make this screen saver the current "
                             "one.\r\nERROR: \"") +
                  module + QStringLiteral("\" could not be found..."));
    EXPECT_EQ(readFile(systemIni()), before);
    EXPECT_TRUE(activeCalls.isEmpty());

    // Reached through a link and a "..": stored as the file's one short name, no separator
    // at the end.
    writeFile(QStringLiteral("Windows/System Files With A Long Name/Kavori Screen Saver.SCR"),
              "module");
    QFile::link(places.systemFolder, root() + QStringLiteral("/sys"));
    places.systemFolder = root() + QStringLiteral("/sys/./");
    ProfileSaver linked(places);
    EXPECT_EQ(linked.MakeCurrent(), QString());
    const QString stored = QFileInfo(module).canonicalFilePath();
    EXPECT_EQ(
        readFile(systemIni()),
        "[boot]\r\nshell=Explorer.exe\r\nsystem.drv=system.drv\r\nSCRNSAVE.EXE=" + stored.toUtf8() +
            "\r\n\r\n[386Enh]\r\ndevice=*vpicd, *vtd\r\n; a comment, kept\r\n");
    EXPECT_EQ(linked.CurrentSaverName(), "Kavori Screen Saver");
    EXPECT_EQ(activeCalls, QList<bool>{true});

    // Disabled while a show plays, then given back as it was.
    const QString remembered = linked.CurrentSaverValue();
    linked.DisableSaver();
    EXPECT_TRUE(readFile(systemIni()).contains("SCRNSAVE.EXE=\r\n"));
    EXPECT_EQ(linked.CurrentSaverName(), QString());
    linked.RestoreSaver(remembered);
    EXPECT_EQ(linked.CurrentSaverValue(), stored);
    EXPECT_EQ(activeCalls, (QList<bool>{true, false, true}));
}

TEST_F(ProfileSaverTest, MissingSectionOrFileIsMadeAndKeysMatchWithoutCase)
{
    writeFile(QStringLiteral("Windows/System Files With A Long Name/Kavori Screen Saver.SCR"), "m");
    ProfileSaver saver(places);
    EXPECT_EQ(saver.CurrentSaverName(), QString()); // no SYSTEM.INI at all
    EXPECT_EQ(saver.MakeCurrent(), QString());
    const QByteArray made = readFile(systemIni());
    EXPECT_TRUE(made.startsWith("[boot]\r\nSCRNSAVE.EXE=/")) << made.constData();

    // Written with other spelling and Unix line ends: found, and the line ends kept.
    writeFile(QStringLiteral("Windows/SYSTEM.INI"), "[drivers]\nwave=mmsound.drv\n[Boot]\n"
                                                    "scrnsave.exe = old.scr\nshell=x\n");
    saver.DisableSaver();
    EXPECT_EQ(readFile(systemIni()),
              "[drivers]\nwave=mmsound.drv\n[Boot]\nSCRNSAVE.EXE=\nshell=x\n");

    // A file without the section gets it at the end, after a blank line.
    writeFile(QStringLiteral("Windows/SYSTEM.INI"), "[drivers]\r\nwave=mmsound.drv\r\n");
    saver.RestoreSaver(QStringLiteral("C:\\OLD.SCR"));
    EXPECT_EQ(readFile(systemIni()),
              "[drivers]\r\nwave=mmsound.drv\r\n\r\n[boot]\r\nSCRNSAVE.EXE=C:\\OLD.SCR\r\n");
    EXPECT_EQ(saver.CurrentSaverName(), "OLD");
}

TEST_F(ProfileSaverTest, DesktopValuesThatAreMissingOrNotStringsMeanOff)
{
    ProfileSaver saver(places);
    EXPECT_FALSE(saver.SaverActive());
    EXPECT_FALSE(saver.PasswordInUse());
    {
        QSettings desktop(places.desktopValues, QSettings::IniFormat);
        desktop.setValue(QStringLiteral("ScreenSaveActive"), QStringLiteral("1"));
        desktop.setValue(QStringLiteral("ScreenSaveUsePassword"), QStringLiteral("0"));
    }
    EXPECT_TRUE(saver.SaverActive());
    EXPECT_FALSE(saver.PasswordInUse());
    {
        QSettings desktop(places.desktopValues, QSettings::IniFormat);
        desktop.setValue(QStringLiteral("ScreenSaveActive"), QStringList{"1", "1"});
        desktop.setValue(QStringLiteral("ScreenSaveUsePassword"), QStringLiteral("yes"));
    }
    EXPECT_FALSE(saver.SaverActive());
    EXPECT_TRUE(saver.PasswordInUse());
}

namespace {

class XScreenSaverTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        fresh = kavori::test::FreshXScreenSaverFile();
        if (fresh.isEmpty())
            GTEST_SKIP() << "XScreenSaver is not installed (scripts/install-deps.sh installs it)";
        config = writeFile(QStringLiteral(".xscreensaver"), fresh);
        module = writeFile(QStringLiteral("bin/Kavori"), "program");
    }
    XScreenSaverSaver saver(const QString& modulePath)
    {
        return XScreenSaverSaver(config, modulePath,
                                 [this](const QString& p, const QStringList& a) {
                                     commands.append(p + u' ' + a.join(u' '));
                                 });
    }

    QByteArray fresh;
    QString config;
    QString module;
    QStringList commands;
};

} // namespace

TEST_F(XScreenSaverTest, MakeCurrentAddsOurSaverAndKeepsTheUsersEntries)
{
    const XScreenSaverFile before = XScreenSaverFile::Parse(fresh);
    const QStringList programs = before.programs();
    ASSERT_GT(programs.size(), 100); // the packaged list, every hack
    EXPECT_EQ(before.value(QStringLiteral("mode")), "random");
    EXPECT_TRUE(std::any_of(programs.begin(), programs.end(),
                            [](const QString& e) { return XScreenSaverFile::IsDisabled(e); }));

    XScreenSaverSaver xss = saver(module);
    EXPECT_TRUE(xss.SaverActive());
    EXPECT_FALSE(xss.PasswordInUse());
    EXPECT_EQ(xss.CurrentSaverName(), QString()); // random: not ours
    EXPECT_EQ(xss.MakeCurrent(), QString());

    const QByteArray written = readFile(config);
    const XScreenSaverFile after = XScreenSaverFile::Parse(written);
    const QStringList now = after.programs();
    ASSERT_EQ(now.size(), programs.size() + 1);
    EXPECT_EQ(now.mid(0, programs.size()), programs);
    EXPECT_EQ(now.last(),
              "\"Kavori Screen Saver\"  " + QFileInfo(module).canonicalFilePath() + " /S");
    EXPECT_EQ(after.value(QStringLiteral("mode")), "one");
    EXPECT_EQ(after.value(QStringLiteral("selected")), QString::number(programs.size()));
    EXPECT_EQ(xss.CurrentSaverName(), "Kavori Screen Saver");

    // Every line of the user's file is still there but the two values and the list's end.
    const QList<QByteArray> newLines = written.split('\n');
    int changed = 0;
    for (const QByteArray& line : fresh.split('\n')) {
        if (!newLines.contains(line))
            ++changed;
    }
    EXPECT_EQ(changed, 3); // mode, selected, and the old last entry that now goes on

    // Again: nothing new is added, the same file comes out.
    EXPECT_EQ(xss.MakeCurrent(), QString());
    EXPECT_EQ(readFile(config), written);

    // The program moved: its entry follows, in the same place.
    const QString moved = writeFile(QStringLiteral("new place/Kavori"), "program");
    XScreenSaverSaver movedSaver = saver(moved);
    EXPECT_EQ(movedSaver.MakeCurrent(), QString());
    const QStringList third = XScreenSaverFile::Parse(readFile(config)).programs();
    ASSERT_EQ(third.size(), now.size());
    EXPECT_EQ(third.last(),
              "\"Kavori Screen Saver\"  '" + QFileInfo(moved).canonicalFilePath() + "' /S");
}

TEST_F(XScreenSaverTest, MissingModuleUnreadableConfigAndNoConfig)
{
    const QString gone = root() + QStringLiteral("/bin/Gone");
    XScreenSaverSaver missing = saver(gone);
    EXPECT_EQ(missing.MakeCurrent(), MissingModuleMessage(gone));
    EXPECT_EQ(readFile(config), fresh);

    // A config that cannot be read is never overwritten.
    QFile::remove(config);
    QDir().mkpath(config);
    XScreenSaverSaver blocked = saver(module);
    EXPECT_EQ(blocked.MakeCurrent(), QString());
    EXPECT_TRUE(QFileInfo(config).isDir());
    QDir(config).removeRecursively();

    // No config yet: one with our saver selected; no saver active before that.
    XScreenSaverSaver first = saver(module);
    EXPECT_FALSE(first.SaverActive());
    EXPECT_EQ(first.MakeCurrent(), QString());
    const XScreenSaverFile made = XScreenSaverFile::Parse(readFile(config));
    EXPECT_EQ(made.programs().size(), 1);
    EXPECT_EQ(made.value(QStringLiteral("selected")), "0");
    EXPECT_EQ(first.CurrentSaverName(), "Kavori Screen Saver");
    EXPECT_TRUE(first.SaverActive());
}

TEST_F(XScreenSaverTest, ModeLockAndHoldingOffWhileAShowPlays)
{
    XScreenSaverFile file = XScreenSaverFile::Parse(fresh);
    file.setValue(QStringLiteral("lock"), QStringLiteral("True"));
    file.setValue(QStringLiteral("mode"), QStringLiteral("off"));
    writeFile(QStringLiteral(".xscreensaver"), file.text());
    XScreenSaverSaver xss = saver(module);
    EXPECT_TRUE(xss.PasswordInUse());
    EXPECT_FALSE(xss.SaverActive());

    const QByteArray before = readFile(config);
    const QString remembered = xss.CurrentSaverValue();
    xss.DisableSaver();
    EXPECT_TRUE(xss.isHoldingOff());
    EXPECT_EQ(commands, QStringList{"xscreensaver-command -deactivate"});
    xss.holdOff();
    EXPECT_EQ(commands.size(), 2);
    xss.RestoreSaver(remembered);
    EXPECT_FALSE(xss.isHoldingOff());
    EXPECT_EQ(readFile(config), before); // the user's file is not touched for this
}
