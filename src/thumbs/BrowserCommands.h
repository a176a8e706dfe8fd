#pragma once

namespace kavori {

class MainViewFrm;

// The file browser pane: docked beside the picture, shown or hidden with the File Browser
// command (ShowFileBrowser), its width and divider kept in FileBrowserWidth and FileBrowserBar.
void ConnectBrowserCommands(MainViewFrm* window);

} // namespace kavori
