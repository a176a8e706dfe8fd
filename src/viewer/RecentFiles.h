#pragma once

#include <QString>

namespace kavori {

// Puts an opened file at the top of the recent files (Recent1..Recent7 for the menu and the
// longer MoreRecentFiles1..20, newest first; a file already listed moves up) and writes the
// lists. Untitled pictures and bare names are not kept, nor anything when KeepRecent is off.
void AddRecentFile(const QString& path);

} // namespace kavori
