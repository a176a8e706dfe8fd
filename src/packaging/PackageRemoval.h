#pragma once

#include <QString>

namespace kavori {

// Deleting a package folder, window-free. Nothing outside the folder is ever touched: a link
// inside it is removed as a link, never followed.

// The title of the delete dialog's boxes.
QString DeletePackageTitle();

// Whether a folder holds a package (a show in its SLIDES folder), and the status line the
// dialog shows for it ("Select location of the package to delete..." for no folder).
bool IsPackageFolder(const QString& folder);
QString PackageFolderStatus(const QString& folder);

// CmdDelete: the checks, the confirmation, the deletions and the messages. True when the
// package was deleted (leftovers are reported, not failures).
bool DeletePackage(const QString& folder);

} // namespace kavori
