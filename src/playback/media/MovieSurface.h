#pragma once

#include <QImage>
#include <QVideoFrame>
#include <QWidget>

class QVideoSink;

namespace kavori {

// Where a movie's picture is shown: the player's frames are painted here like any other
// widget, so the movie shows on every platform and in a grab of its window. (A video widget
// draws through a native window of its own, which stays black under X without a working GL.)
class MovieSurface final : public QWidget {
public:
    explicit MovieSurface(QWidget* parent);

    // Give this to the media player as its video output.
    QVideoSink* videoSink() const { return m_sink; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVideoSink* m_sink;
    QVideoFrame m_frame;
    QImage m_image;       // m_frame as a picture, made when it is first painted
    bool m_stale = false; // m_image is not yet m_frame
};

} // namespace kavori
