#pragma once

#include "MovingPicture.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <memory>

namespace kavori {

class DecodePipeline;

// A movie's picture size and length as its file says; an invalid size when it has no
// picture or cannot be read.
struct MovieInfo {
    QSize size;
    qint64 duration = 0; // microseconds
};
MovieInfo ReadMovieInfo(const QString& file);

// The pictures of a movie slide, read one after another through GStreamer's decoders at the
// size the slide shows them, the movie starting over when it ends, as the player repeats it.
class MovieFrames : public MovingPicture {
public:
    MovieFrames();
    ~MovieFrames() override;
    MovieFrames(const MovieFrames&) = delete;
    MovieFrames& operator=(const MovieFrames&) = delete;

    // False when the movie cannot be read.
    bool open(const QString& file, const QSize& size);
    // The picture shown at time (microseconds from the movie's start, going forward from call
    // to call). Null when the movie has no picture.
    const QImage& frameAt(qint64 time) override;

private:
    bool pull();
    bool restart();

    std::unique_ptr<DecodePipeline> m_p;
    QSize m_size;
    QImage m_current;
    QImage m_next;
    qint64 m_nextTime = -1; // of m_next, from the movie's start; -1 at the end
    qint64 m_offset = 0;    // where the current round of the movie began
    qint64 m_length = 0;    // one round, once known
};

} // namespace kavori
