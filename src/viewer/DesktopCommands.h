#pragma once

namespace kavori {

class MainViewFrm;

// The commands that reach into the desktop: the wallpaper (set, tiled, open, clear) and
// opening the picture in another program.
void ConnectDesktopCommands(MainViewFrm* window);

} // namespace kavori
