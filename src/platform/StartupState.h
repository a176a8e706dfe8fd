#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// What the entry routine learns once at start and everything else reads. It lives below every
// subsystem so that documents and playback can read it without knowing the entry routine.
struct StartupState {
    QString CommandLine; // the working command line, rewritten as prefixes are stripped
    // Several pictures named on the command line: the first opens, and the window steps
    // through them in this order instead of through the first one's folder.
    QStringList CommandLineFiles;
    QString EditFile;      // slide show to open in the editor once the main window is up
    QString FullFile;      // image to show full screen
    qint64 LoadStart = -1; // tick count at start when "LOADTIME" was given
    bool ScreenSaverMode = false;
    bool FirstRun = false;
    bool AnimatedGif = false;
    bool StartedFromShow = false;
    QString SavedCurDir;
    bool WaveDevices = false;
    bool MidiDevices = false;
    bool IsOldNT = false;               // a Windows NT before version 4: never true here
    bool ScreenSaveUsePassword = false; // the system's locker owns the password on Linux
    bool ShowDisplayProperties = false; // the user asked to adjust the display after start
    quintptr SaverWindow = 0;           // the window the system's saver gave us to play in
};

StartupState& CurrentStartup();
void ResetStartup();

} // namespace kavori
