#pragma once

#include <QList>
#include <QString>

namespace kavori {

class Progress;

// Zip archives of a picture, of a folder's pictures or of a whole folder. The archive is
// written under a temporary name beside its destination and renamed into place only when
// complete: a cancelled or failed job leaves no partial archive, and an older archive of the
// same name stays whole until the new one replaces it.

// One file to archive and its name inside the archive ("/" between folders).
struct ZipEntry {
    QString file;
    QString name;
};

// The pictures of a folder (not of its sub-folders), in name order.
QList<ZipEntry> FolderPictureEntries(const QString& folder);

// Every file of a folder and of its sub-folders, named from the folder's own name down
// ("Trip/day 1/a.jpg"), so the archive unpacks into one folder. Symbolic links are not
// followed. Empty when the progress was cancelled while listing.
QList<ZipEntry> FolderTreeEntries(const QString& folder, Progress& progress);

enum class ZipResult { Done, Cancelled, Failed };

struct ZipOutcome {
    ZipResult result = ZipResult::Failed;
    QString problem; // what failed, for the message
};

// Writes the archive. Pictures that are already compressed are stored as they are; other
// files are deflated.
ZipOutcome WriteZip(const QString& archive, const QList<ZipEntry>& entries, Progress& progress);

// The archive's name for a picture or a folder: its name with ".zip", beside it.
QString ZipNameFor(const QString& path);

} // namespace kavori
