#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// The command line as one string: the arguments joined by single spaces.
QString JoinArguments(const QStringList& arguments);

// Several existing pictures given as separate arguments (a file manager opening a selection):
// their full paths in the order given. Empty for fewer than two arguments, when any argument is
// not a picture, or when the arguments joined name one file (a path with spaces, unquoted).
QStringList SeveralPictures(const QStringList& arguments);

// The first steps of start-up: trimmed, a leading and (independently) a trailing double quote
// dropped, and "LOADTIME" taken off the front.
struct NormalizedCommandLine {
    QString commandLine;
    bool loadTime = false;
};
NormalizedCommandLine NormalizeCommandLine(const QString& raw);

// "/EDIT " followed by a slide show: the file to open in the editor (empty unless it is a full
// path to an existing ".KAV" file of 5 characters or more). In every "/EDIT " case the
// command line becomes empty; without it, a single leading "/" is dropped.
struct EditRequest {
    QString commandLine;
    QString editFile;
};
EditRequest TakeEditRequest(const QString& commandLine);

// Whether a leading "/" is a switch mark to drop rather than the start of a full path.
bool IsSwitchSlash(const QString& commandLine);

// Which mode to start, decided from the command line left after the steps above.
enum class StartMode {
    MainWindow,          // commandLine is an image path or empty
    FullScreenImage,     // fullFile full screen, then end or go on to the main window
    SlideShow,           // play showPath full screen
    ScreenSaver,         // run showPath as the screen saver
    ScreenSaverSettings, // the screen saver settings dialog, then end
    End,                 // end at once, silently
};

// Slide shows named with a floppy drive are checked before reading.
enum class FloppyCheck {
    None,
    AskForDisk,      // the drive holds no readable disk: ask for it
    InvalidFileName, // a path of 7 characters or fewer: refused
};

struct StartDecision {
    StartMode mode = StartMode::MainWindow;
    QString commandLine; // what the main window opens (an image path or nothing)
    QString fullFile;    // FullScreenImage
    bool exitAfterFullScreen = false;
    QString showPath; // SlideShow, ScreenSaver
    bool screenSaverMode = false;
    FloppyCheck floppy = FloppyCheck::None;
};

struct StartOptions {
    bool startFullScreen = false; // StartFullScreen
    bool cmdLineExit = true;      // CmdLineExit
};

StartDecision DecideStartMode(const QString& commandLine, const StartOptions& options);

// The messages of the floppy check.
QString FloppyDiskQuestion(const QString& path);
QString InvalidFileNameMessage(const QString& path);

// Our screen saver module's run: "/S" (the switch a Windows saver module is started with),
// with XScreenSaver's "-root" or "-window-id ID" after it. It plays the show CurrentSaver
// names, as the screen saver, in the window given (0: full screen).
struct SaverModuleRun {
    bool isRun = false;
    quintptr windowId = 0;
};
SaverModuleRun ParseSaverModuleRun(const QString& commandLine, const QString& saverWindowVariable);

// The window titles whose presence means another instance owns the screen.
QString ScreenSaverWindowTitle();
QString ScreenSaverSettingsWindowTitle();

} // namespace kavori
