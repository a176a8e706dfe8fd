#include "EntryRoutine.h"

#include "CommandLine.h"
#include "Modes.h"
#include "StartupChecks.h"
#include "WaitFrm.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "platform/SoundDevices.h"
#include "platform/StartupState.h"
#include "platform/TickCount.h"
#include "platform/UserSettings.h"
#include "platform/WindowLock.h"
#include "playback/FullViewFrm.h"
#include "runtime/DoEvents.h"
#include "runtime/MsgBox.h"
#include "settings/Languages.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/BonusPack.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "systemsaver/SystemSaver.h"
#include "viewer/MainViewFrm.h"

#include <QApplication>
#include <QDir>

namespace kavori {

namespace {

// Every path that ends start-up closes the loading window and gives the pointer back.
int endStartup(int code = 0)
{
    WaitFrm::CloseAll();
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    return code;
}

void handOver()
{
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
}

} // namespace

std::optional<int> RunEntryRoutine(const QStringList& arguments)
{
    StartupState& state = CurrentStartup();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    DoEvents();

    // Several pictures open as the first, the rest stepped through; any other form of the
    // command line is one string, as it always was.
    state.CommandLineFiles = SeveralPictures(arguments);
    const NormalizedCommandLine normalized = NormalizeCommandLine(
        state.CommandLineFiles.isEmpty() ? JoinArguments(arguments) : state.CommandLineFiles[0]);
    state.CommandLine = normalized.commandLine;
    state.LoadStart = normalized.loadTime ? GetTickCount() : -1;
    EnsureAppHome();
    LoadLanguages();

    // Our saver module asks for the show the settings chose, as the screen saver.
    const SaverModuleRun module =
        ParseSaverModuleRun(state.CommandLine, qEnvironmentVariable("XSCREENSAVER_WINDOW"));
    if (module.isRun) {
        const QString show = GetSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"));
        state.CommandLine = QString(QStringLiteral("SCRNSAVE ") + show).trimmed();
        state.SaverWindow = module.windowId;
    }

    if (state.CommandLine.startsWith(QLatin1String("SCRNSAVE"))) {
        if (WindowLock::Exists(ScreenSaverWindowTitle()))
            return endStartup(); // a screen saver is running already
        state.ScreenSaveUsePassword = CurrentSystemSaver().PasswordInUse();
    } else {
        WaitFrm::Open();
    }

    // The order is kept: settings first, then the checks that may read them.
    LoadSettings();
    DoEvents();
    if (!CheckColorDepth(state.CommandLine))
        return endStartup();
    DoEvents();
    state.WaveDevices = DetectWaveDevices();
    state.MidiDevices = DetectMidiDevices();
    DoEvents();
    LoadBonusPack();
    DoEvents();
    if (!CheckProgramPath())
        return endStartup();
    state.IsOldNT = false;

    const EditRequest edit = TakeEditRequest(state.CommandLine);
    state.EditFile = edit.editFile;
    state.CommandLine = edit.commandLine;

    const Settings& settings = CurrentSettings();
    const StartDecision decision =
        DecideStartMode(state.CommandLine, {settings.StartFullScreen, settings.CmdLineExit});
    state.ScreenSaverMode = decision.screenSaverMode;
    state.CommandLine = decision.commandLine;

    switch (decision.mode) {
    case StartMode::End:
        return endStartup();
    case StartMode::ScreenSaverSettings:
        endStartup();
        return RunScreenSaverSettingsMode();
    case StartMode::FullScreenImage:
        state.FullFile = decision.fullFile;
        state.AnimatedGif = settings.CmdLineAnimate && IsAnimatedPicture(state.FullFile);
        WaitFrm::CloseAll();
        handOver();
        FullViewFrm::ShowImageModal(state.FullFile, state.AnimatedGif);
        if (decision.exitAfterFullScreen)
            return endStartup();
        break;
    case StartMode::SlideShow:
    case StartMode::ScreenSaver: {
        if (decision.floppy == FloppyCheck::InvalidFileName) {
            MsgBox(InvalidFileNameMessage(decision.showPath), vbInformation + vbSystemModal);
            return endStartup();
        }
        if (decision.floppy == FloppyCheck::AskForDisk &&
            MsgBox(FloppyDiskQuestion(decision.showPath),
                   vbOKCancel + vbInformation + vbSystemModal) == vbCancel)
            return endStartup();
        ReadSlideShow(decision.showPath);
        if (CurrentShow().slides.isEmpty()) {
            if (state.ScreenSaverMode)
                MsgBox(QStringLiteral("There are no pictures in this screen saver to view..."),
                       vbInformation + vbSystemModal);
            else
                MsgBox(QStringLiteral("There are no pictures in this slide show to view..."),
                       vbInformation);
            return endStartup();
        }
        state.SavedCurDir = QDir::currentPath();
        QDir::setCurrent(FolderOf(decision.showPath));
        state.StartedFromShow = true;
        endStartup();
        return decision.mode == StartMode::ScreenSaver ? RunScreenSaverMode() : RunSlideShowMode();
    }
    case StartMode::MainWindow:
        break;
    }

    auto* window = new MainViewFrm;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
    handOver();
    return std::nullopt;
}

} // namespace kavori
