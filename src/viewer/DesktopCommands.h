#pragma once

namespace kavori {

class MainViewFrm;

// The commands that reach into the desktop: the wallpaper (set, tiled, open, clear) and
// opening the picture in another program.
void ConnectDesktopCommands(MainViewFrm* window);

// Shows the open-with entries that have a program, named after it.
void UpdateOpenWithMenu(MainViewFrm* window);

} // namespace kavori
