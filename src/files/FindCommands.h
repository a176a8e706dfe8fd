#pragma once

namespace kavori {

class MainViewFrm;

// Brings the main window's find commands to life. "Find Image" (and its toolbar button) finds
// pictures by name under a folder and opens the chosen one in the window, where browsing goes
// on in its folder. "Find Slide Shows" finds show files the same way; Open loads the chosen
// show into the slide show editor, Play plays it as "Open Slide Show" does.
void ConnectFindCommands(MainViewFrm* window);

} // namespace kavori
