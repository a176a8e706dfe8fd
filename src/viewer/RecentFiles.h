#pragma once

#include <QString>

namespace kavori {

// Puts an opened file at the top of the recent files (Recent1..Recent7, newest first; a file
// already listed moves up) and writes the list. Untitled pictures and bare names are not kept.
void AddRecentFile(const QString& path);

} // namespace kavori
