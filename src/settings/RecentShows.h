#pragma once

#include <QString>

namespace kavori {

// Puts a slide show at the top of the recent-shows list and writes the list to KAVORI.INI.
// Paths that are empty, shorter than 8 characters or not full paths are ignored; a show
// already in the list (compared without case) stays where it is.
void AddRecentShow(const QString& path);

// A show file that has gone leaves the recent and the favourite shows (entries compared
// without case, the rest closing up) and the last-shown show; the lists are written when they
// changed. Returns whether any entry named it.
bool ForgetShow(const QString& path);
// A show file that was renamed: those entries name the new path, in their places.
bool FollowShow(const QString& oldPath, const QString& newPath);

// Writes RecentShow1 ... RecentShow20 of the settings object to KAVORI.INI.
void WriteRecentShows();

} // namespace kavori
