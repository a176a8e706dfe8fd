#pragma once

#include <QByteArray>
#include <QString>

class QSaveFile;

namespace kavori {

// Copying and moving over a file that may already exist, without ever losing it: the target
// is replaced in one step only once the new content is whole. A full disk, a source that
// vanishes half-way or a read error leaves the old target exactly as it was and no partial
// file beside it.

// Copies source to target (replacing it); the copy keeps the source's permissions. A symbolic
// link in the target's place is replaced by the copy, not followed.
bool CopyFileOver(const QString& source, const QString& target);

// Moves source to target (replacing it): one rename on the same volume, else a copy as above
// and then the source is removed. False when the source is still where it was; when only its
// removal failed, the target already holds the copy.
bool MoveFileOver(const QString& source, const QString& target);

// Writes bytes as the whole new content of path, replacing the old file in one step only when
// every byte reached the disk. inPlaceWhenFolderIsReadOnly: a writable file in a folder that
// cannot take a new file is written over directly (then not in one step).
bool WriteFileWhole(const QString& path, const QByteArray& bytes, bool inPlaceWhenFolderIsReadOnly);

// Ends a save file's writing: flushes it and puts it in place only when nothing failed, else
// discards it. QSaveFile::commit alone reports success when its last buffered write failed,
// and would put a truncated file in the old one's place.
bool CommitWhole(QSaveFile& file);

} // namespace kavori
