#pragma once

#include <QRect>
#include <QSize>
#include <QString>

#include <functional>

class QWidget;

namespace kavori {

// The one way a movie starts, for a movie slide and for a movie's thumbnail alike: opened under
// the alias "Movie" as AVIVideo or MPEGVideo, drawn in surface, which place() sizes and moves
// from the movie's own size (0 x 0 when unknown), then shown and played from the start.
// Returns 0, or the failing command's result after closing the alias again (surface hidden).
// A slide stops it with "stop Movie", "close Movie"; a thumbnail holds it with "pause Movie".
quint32 StartMovie(const QString& file, QWidget* surface,
                   const std::function<QRect(const QSize&)>& place);

} // namespace kavori
