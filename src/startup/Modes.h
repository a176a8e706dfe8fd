#pragma once

#include <QString>

namespace kavori {

// The modes the entry routine hands over to when it does not open the main window. Each
// returns the process's exit code once its window has closed.

// Plays the slide show in memory full screen (started from the command line).
int RunSlideShowMode();
// Runs the slide show in memory as the screen saver.
int RunScreenSaverMode();
// Shows the screen saver settings dialog.
int RunScreenSaverSettingsMode();

} // namespace kavori
