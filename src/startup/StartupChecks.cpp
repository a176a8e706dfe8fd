#include "StartupChecks.h"

#include "WaitFrm.h"
#include "platform/AppPaths.h"
#include "platform/Display.h"
#include "platform/HelpFile.h"
#include "platform/StartupState.h"
#include "platform/UserSettings.h"
#include "playback/TransitionEngine.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"

namespace kavori {

namespace {
const QString kSettings = QStringLiteral("Settings");
const QString kRuntime = QStringLiteral("Runtime");
const QString kExePath = QStringLiteral("EXEPath");
const QString kCurrentSaver = QStringLiteral("CurrentSaver");
const QString kProgramRun = QStringLiteral("ProgramRun");
} // namespace

QString ColorDepthTooLowMessage()
{
    return QStringLiteral("Kavori requires at least 256 colors, unable to start program...");
}

QString Colors256Question()
{
    return QStringLiteral("This computer appears to be running in 256 color mode.") + NewLine() +
           QStringLiteral("( Press \"Cancel\" to stop showing this message in the future. )") +
           NewLine2() +
           QStringLiteral("NOTE: Kavori performs best with more than 256 colors, you may need to "
                          "adjust your current display settings to get photo-realistic image "
                          "quality...") +
           NewLine2() +
           QStringLiteral("Show the \"Display Properties\" dialog after the program starts, so you "
                          "can make changes?");
}

QString ProgramPathMissingMessage()
{
    return QStringLiteral("The path to this program was not found in the system registry, Kavori "
                          "features may not have worked properly as a result.") +
           NewLine2() + QStringLiteral("Registry entries have been updated...");
}

QString ProgramPathDifferentQuestion(const QString& appPath)
{
    return QStringLiteral("The path to this program is not the same as the path found in the "
                          "system registry, Kavori may have been re-installed and/or moved.") +
           NewLine2() + appPath + QStringLiteral("KAVORIX.EXE") + NewLine2() +
           QStringLiteral("Do you want to make this your default one?");
}

bool CheckColorDepth(const QString& commandLine)
{
    const int bits = DisplayColorDepth();
    Transitions().Colors256 = bits == 8;
    if (bits < 8) {
        WaitFrm::CloseAll();
        const MessageHelpTopic topic(QStringLiteral("startup#colors"));
        MsgBox(ColorDepthTooLowMessage(), vbInformation + vbMsgBoxHelpButton);
        return false;
    }
    if (bits == 8 && CurrentSettings().Color256Msg &&
        !commandLine.startsWith(QLatin1String("SCRNSAVE"))) {
        const WaitFrm::StepAside aside;
        const MessageHelpTopic topic(QStringLiteral("startup#colors256"));
        const int answer =
            MsgBox(Colors256Question(), vbYesNoCancel + vbInformation + vbMsgBoxHelpButton);
        if (answer == vbYes) {
            CurrentStartup().ShowDisplayProperties = true;
        } else if (answer == vbCancel) {
            CurrentSettings().Color256Msg = false;
            LoadIniFile(SettingsFilePath());
            SetIniValue(ViewerSection(), QStringLiteral("Color256Msg"), QStringLiteral("False"));
            SaveIniFile(SettingsFilePath());
        }
    }
    return true;
}

bool CheckProgramPath()
{
    // Hand-over from an installer or the run-time player.
    if (!GetSetting(kRuntime, kExePath).isEmpty())
        SaveSetting(kRuntime, kExePath, QString());
    const QString saver = GetSetting(kRuntime, kCurrentSaver);
    if (!saver.isEmpty()) {
        SaveSetting(kSettings, kCurrentSaver, saver);
        SaveSetting(kRuntime, kCurrentSaver, QString());
    }

    const QString appPath = AppPath();
    const QString stored = GetSetting(kSettings, kExePath);
    if (stored.isEmpty()) {
        const WaitFrm::StepAside aside;
        const MessageHelpTopic topic(QStringLiteral("startup#registry"));
        MsgBox(ProgramPathMissingMessage(), vbExclamation + vbMsgBoxHelpButton);
        SaveSetting(kSettings, kExePath, appPath);
    } else if (AddSlash(stored).toUpper() != appPath.toUpper()) {
        // The running executable always exists, so the question is always asked.
        const WaitFrm::StepAside aside;
        const MessageHelpTopic topic(QStringLiteral("startup#moved"));
        const int answer = MsgBox(ProgramPathDifferentQuestion(appPath),
                                  vbYesNoCancel + vbQuestion + vbMsgBoxHelpButton);
        if (answer == vbYes)
            SaveSetting(kSettings, kExePath, appPath);
        else if (answer == vbCancel)
            return false;
    }

    if (GetSetting(kSettings, kProgramRun, QStringLiteral("0")) != QLatin1String("1")) {
        CurrentStartup().FirstRun = true;
        SaveSetting(kSettings, kProgramRun, QStringLiteral("1"));
    }
    return true;
}

} // namespace kavori
