#pragma once

#include "slideshow/SlideShow.h"

#include <QImage>
#include <QStringList>
#include <QWidget>

namespace kavori {

class PaintingCanvas;

// A small box that shows a few lines of text, or a picture, and plays a transition from what
// it shows to a new picture, paced like the player.
class TransitionPreviewBox : public QWidget {
    Q_OBJECT
public:
    explicit TransitionPreviewBox(QWidget* parent = nullptr);

    void setLines(const QStringList& lines);
    QStringList lines() const { return m_lines; }
    // Runs transition number from the picture shown (black at first) to picture, which has the
    // box's size in device pixels. Returns once the effect has ended.
    void play(qint16 number, const QImage& picture);
    bool isPlaying() const { return m_canvas != nullptr; }
    // Ends a running effect where it stands.
    void stop();
    // The box's size in device pixels.
    QSize pixelSize() const;
    const QImage& shown() const { return m_shown; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_shown;
    QStringList m_lines;
    PaintingCanvas* m_canvas = nullptr;
};

// Plays one slide full screen with the given transition, as the player shows it, without its
// sound, the pause key or a record of the last slide shown; the show in memory and the
// settings are as they were afterwards.
void PreviewTransitionFullScreen(const Slide& slide, qint16 transition, QWidget* parent);

} // namespace kavori
