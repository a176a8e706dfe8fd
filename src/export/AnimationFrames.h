#pragma once

#include "MovingPicture.h"

#include <QSize>
#include <QString>

#include <memory>

class QImageReader;

namespace kavori {

// The pictures of an animated picture slide (GIF, WebP) at the size the slide shows it, read
// one after another as time goes forward, each for its own delay, going round as often as the
// file says (for ever when it says so), then standing on the last, as the player's animation
// does. Only the picture shown and the next are held, whatever the number of frames.
class AnimationFrames : public MovingPicture {
public:
    AnimationFrames();
    ~AnimationFrames() override;

    // False when the file cannot be read or holds fewer than two pictures.
    bool open(const QString& file, const QSize& size);
    const QImage& frameAt(qint64 time) override;

private:
    bool startRound();
    bool pull();

    std::unique_ptr<QImageReader> m_reader;
    QString m_file;
    QSize m_size;
    int m_roundsLeft = 0; // after this one; -1 for ever
    QImage m_current;
    QImage m_next;
    qint64 m_nextTime = -1; // when m_next is due; -1 once the last round has ended
    qint64 m_time = 0;      // where the frame being read starts
};

} // namespace kavori
