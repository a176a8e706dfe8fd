#pragma once

#include <QString>

namespace kavori {

class MainViewFrm;
class frmThumbnail;

// The main window's thumbnail commands: the browser on the current picture's folder, or on a
// folder the user picks.
void ConnectThumbnailCommands(MainViewFrm* window);

// Opens (or brings forward) the window's thumbnail browser on a folder; an empty folder asks
// for one. Returns the browser, or null when the user chose no folder.
frmThumbnail* OpenThumbnailBrowser(MainViewFrm* window, const QString& folder);

} // namespace kavori
