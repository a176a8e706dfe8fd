#include "Modes.h"

namespace kavori {

// The full-screen player and the screen saver settings dialog are built as their own
// subsystems; until they are part of the program these modes end cleanly, as the command
// line promises that no half-made window is ever shown.
int RunSlideShowMode()
{
    return 0;
}

int RunScreenSaverMode()
{
    return 0;
}

int RunScreenSaverSettingsMode()
{
    return 0;
}

} // namespace kavori
