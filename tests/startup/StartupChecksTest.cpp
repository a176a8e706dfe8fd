#include "startup/StartupChecks.h"
#include "platform/AppPaths.h"
#include "platform/Display.h"
#include "platform/UserSettings.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "platform/StartupState.h"
#include "support/KavoriTest.h"

using namespace kavori;

class StartupChecksTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetStartup();
        EnsureAppHome();
    }
    QString storedColor256Msg()
    {
        LoadIniFile(SettingsFilePath());
        const QString value = GetIniValue(QStringLiteral("Viewer"), QStringLiteral("Color256Msg"));
        ClearIni();
        return value;
    }
};

TEST_F(StartupChecksTest, ColourDepth)
{
    // Fewer than 256 colours: refused, with a Help button.
    SetDisplayColorDepthOverride(4);
    EXPECT_FALSE(CheckColorDepth(QString()));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "Kavori requires at least 256 colors, unable to start program...");
    EXPECT_EQ(prompts().calls[0].style, vbInformation + vbMsgBoxHelpButton);
    EXPECT_EQ(prompts().calls[0].title, "Kavori");

    // More than 256: nothing asked.
    prompts().clear();
    SetDisplayColorDepthOverride(24);
    EXPECT_TRUE(CheckColorDepth(QString()));
    EXPECT_TRUE(prompts().calls.isEmpty());

    // Exactly 256 with the question switched off, or for a screen saver: nothing asked.
    SetDisplayColorDepthOverride(8);
    CurrentSettings().Color256Msg = false;
    EXPECT_TRUE(CheckColorDepth(QString()));
    CurrentSettings().Color256Msg = true;
    EXPECT_TRUE(CheckColorDepth(QStringLiteral("SCRNSAVE /a.kav")));
    EXPECT_TRUE(prompts().calls.isEmpty());

    // Yes: the display settings are to be shown after start.
    prompts().answers = {vbYes};
    EXPECT_TRUE(CheckColorDepth(QString()));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].style, vbYesNoCancel + vbInformation + vbMsgBoxHelpButton);
    EXPECT_TRUE(prompts().calls[0].text.startsWith(
        "This computer appears to be running in 256 color mode.\r\n( Press \"Cancel\" to stop showing"));
    EXPECT_TRUE(prompts().calls[0].text.endsWith(
        "\r\n\r\nShow the \"Display Properties\" dialog after the program starts, so you can make changes?"));
    EXPECT_TRUE(CurrentStartup().ShowDisplayProperties);
    EXPECT_EQ(storedColor256Msg(), "");

    // No: nothing changes.
    ResetStartup();
    prompts().answers = {vbNo};
    EXPECT_TRUE(CheckColorDepth(QString()));
    EXPECT_FALSE(CurrentStartup().ShowDisplayProperties);
    EXPECT_EQ(storedColor256Msg(), "");

    // Cancel: never asked again.
    prompts().answers = {vbCancel};
    EXPECT_TRUE(CheckColorDepth(QString()));
    EXPECT_FALSE(CurrentSettings().Color256Msg);
    EXPECT_EQ(storedColor256Msg(), "False");
    EXPECT_EQ(prompts().calls.size(), 3);
}

TEST_F(StartupChecksTest, ProgramPathAndFirstRun)
{
    const QString settings = QStringLiteral("Settings");
    const QString runtime = QStringLiteral("Runtime");
    // The run-time's hand-over values are taken and cleared.
    SaveSetting(runtime, QStringLiteral("EXEPath"), QStringLiteral("/somewhere/"));
    SaveSetting(runtime, QStringLiteral("CurrentSaver"), QStringLiteral("/shows/saver.kav"));

    // Empty: told, and stored; first run noted once.
    EXPECT_TRUE(CheckProgramPath());
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(
        prompts().calls[0].text,
        "The path to this program was not found in the system registry, Kavori features may not "
        "have worked properly as a result.\r\n\r\nRegistry entries have been updated...");
    EXPECT_EQ(prompts().calls[0].style, vbExclamation + vbMsgBoxHelpButton);
    EXPECT_EQ(GetSetting(settings, QStringLiteral("EXEPath")), AppPath());
    EXPECT_EQ(GetSetting(runtime, QStringLiteral("EXEPath")), "");
    EXPECT_EQ(GetSetting(runtime, QStringLiteral("CurrentSaver")), "");
    EXPECT_EQ(GetSetting(settings, QStringLiteral("CurrentSaver")), "/shows/saver.kav");
    EXPECT_TRUE(CurrentStartup().FirstRun);
    EXPECT_EQ(GetSetting(settings, QStringLiteral("ProgramRun")), "1");

    // The same path (without the final "/", other case): nothing asked, not a first run.
    ResetStartup();
    prompts().clear();
    SaveSetting(settings, QStringLiteral("EXEPath"), AppPath().chopped(1).toLower());
    EXPECT_TRUE(CheckProgramPath());
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_FALSE(CurrentStartup().FirstRun);

    // A different path: No keeps it, Yes stores ours, Cancel ends the program.
    const QString other = QStringLiteral("/opt/old-kavori/");
    const QString question =
        "The path to this program is not the same as the path found in the system registry, Kavori "
        "may have been re-installed and/or moved.\r\n\r\n" +
        AppPath() + "KAVORIX.EXE\r\n\r\nDo you want to make this your default one?";
    SaveSetting(settings, QStringLiteral("EXEPath"), other);
    prompts().answers = {vbNo};
    EXPECT_TRUE(CheckProgramPath());
    EXPECT_EQ(prompts().calls.last().text, question);
    EXPECT_EQ(prompts().calls.last().style, vbYesNoCancel + vbQuestion + vbMsgBoxHelpButton);
    EXPECT_EQ(GetSetting(settings, QStringLiteral("EXEPath")), other);

    prompts().answers = {vbCancel};
    EXPECT_FALSE(CheckProgramPath());
    EXPECT_EQ(GetSetting(settings, QStringLiteral("EXEPath")), other);

    prompts().answers = {vbYes};
    EXPECT_TRUE(CheckProgramPath());
    EXPECT_EQ(GetSetting(settings, QStringLiteral("EXEPath")), AppPath());
    EXPECT_EQ(prompts().calls.size(), 3);
}
