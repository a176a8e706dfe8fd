#pragma once

namespace kavori {

class MainViewFrm;

// The Zip menu of the main window: the picture on the screen, the pictures of a folder, or a
// whole folder with its sub-folders, each packed into a zip archive the user names. Progress
// shows while the archive is written, Cancel stops it, and nothing is left half-written.
void ConnectZipCommands(MainViewFrm* window);

} // namespace kavori
