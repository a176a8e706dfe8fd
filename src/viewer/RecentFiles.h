#pragma once

#include <QString>

namespace kavori {

// Puts an opened file at the top of the recent files (Recent1..Recent7 for the menu and the
// longer MoreRecentFiles1..20, newest first; a file already listed moves up) and writes the
// lists. Untitled pictures and bare names are not kept, nor anything when KeepRecent is off.
void AddRecentFile(const QString& path);

// The File menu's entry for recent file number (1 to 7): "&1 " and the shortened path, its own
// "&" doubled so a folder named "Tom & Jerry" shows as it is and 1 stays the accelerator.
QString RecentMenuCaption(int number, const QString& path);

} // namespace kavori
