#pragma once

#include <QString>

namespace kavori {

// What follows a picture when it is copied, moved, renamed or deleted: its entry in its
// folder's description file, the favourite files, the slides of the show in memory and the
// show's sound. Each returns whether it changed anything.

// The description of source, if it has one, is given to target in target's folder.
bool CopyDescriptionEntry(const QString& source, const QString& target);
// Takes the file's entry out of its folder's description file.
bool RemoveDescriptionEntry(const QString& path);

// Favourite files equal to path (without regard to case) are cleared, or renamed when
// newPath is given; the list is written when it changed.
bool ClearFavoriteFile(const QString& path);
bool RenameFavoriteFile(const QString& path, const QString& newPath);

// Slides naming oldPath name newPath; the show's sound setting follows too. Returns how
// many slides changed (the sound is not counted).
int MoveShowEntries(const QString& oldPath, const QString& newPath);

// Two paths name the same file: the same file on disk when both exist, else the same name
// without regard to case.
bool SamePath(const QString& a, const QString& b);

} // namespace kavori
