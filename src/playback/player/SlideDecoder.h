#pragma once

#include "slideshow/SlideShow.h"

#include <QFuture>
#include <QHash>
#include <QImage>
#include <QSize>
#include <QVector>

namespace kavori {

// Reads slides' pictures ahead on worker threads, at the size they are drawn, so that the
// slide clock never waits on a file. A picture is asked for at most once while it is being
// read; pictures no longer wanted are dropped.
class SlideDecoder {
public:
    explicit SlideDecoder(const QSize& screen = QSize());
    ~SlideDecoder();

    void setScreen(const QSize& screen);
    const QSize& screen() const { return m_screen; }

    // Reads these slides ahead; anything read before for other slides is forgotten.
    void prefetch(const QVector<Slide>& slides);
    // The slide's picture: the one read ahead (waiting for it when still being read), else
    // read now. Null when the file cannot be read.
    QImage take(const Slide& slide);
    // How many pictures are held or being read.
    int pending() const { return int(m_entries.size()); }

private:
    static QString keyOf(const Slide& slide);
    QSize m_screen;
    QHash<QString, QFuture<QImage>> m_entries;
};

} // namespace kavori
