#pragma once

#include <QString>

namespace kavori {

// Adds a file to the desktop's list of recently used documents (the freedesktop
// recently-used.xbel that file managers and open dialogs read). Other programs' entries are
// kept as they are. False when the list cannot be written.
bool AddToRecentDocuments(const QString& path);

// Where that list lives.
QString RecentDocumentsPath();

} // namespace kavori
