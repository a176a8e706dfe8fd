#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

struct SlideShow;

// The decisions of the thumbnail cells' commands: each returns the message that refuses the
// command, or empty when it may go ahead.

// How a cell's file is opened.
enum class OpenKind { Refused, Image, Movie };
struct OpenDecision {
    OpenKind kind = OpenKind::Refused;
    QString message; // the refusal, ending in the path
};
OpenDecision OpenThumbnailFile(const QString& path);

// Deleting refuses the picture open in the main window and a slide of the open show.
QString DeleteCellRefusal(const QString& path, const QString& currentFile, const SlideShow& show);
// Renaming refuses a slide of the open show.
QString RenameCellRefusal(const QString& path, const SlideShow& show);
bool IsSlideOf(const SlideShow& show, const QString& path);
QString RenameCellTitle();

// Adding to the favourite files: movies, files already there, and a full list are refused.
QString FavoriteCellRefusal(const QString& path, const QStringList& favorites);
QString FavoriteCellTitle();

// Playing a GIF's animation: there must be a file, a .GIF one, in the GIF89a format.
QString AnimatedGifRefusal(const QString& path);

// "name (12,345 bytes)", what a click on a cell shows about its file.
QString PreviewText(const QString& path);

} // namespace kavori
