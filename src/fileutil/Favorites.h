#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// The favourite files: up to 20 pictures or folders (FavoriteFile1..20 of the settings),
// kept in the order the user gave them, written to the settings file on every change.

constexpr int kMaxFavoriteFiles = 20;

QStringList FavoriteFiles(); // the entries in use, in order
// Stores the list packed from the first entry on (at most 20) and writes it.
void SetFavoriteFiles(const QStringList& files);

// Adds an entry at the end; false after its message when it is already there (compared
// without case) or the list is full.
bool AddFavoriteFile(const QString& path);
// Takes an entry out; false after its message when it is not there.
bool RemoveFavoriteFile(const QString& path);
// Empties the list after the question; false when it was empty or the user said no.
bool ClearFavoriteFiles();

// A folder of the list rather than a picture.
bool IsFavoriteFolder(const QString& entry);

// The pictures of the list saved as a slide show file (the show in memory is left as it
// was). False after its message when the list has no pictures or the file cannot be written.
bool SaveFavoritesAsShow(const QString& path);

} // namespace kavori
