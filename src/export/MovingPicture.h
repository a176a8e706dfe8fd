#pragma once

#include <QImage>

namespace kavori {

// Pictures that change while a slide stands in a video: a movie, an animated picture.
class MovingPicture {
public:
    virtual ~MovingPicture() = default;
    // The picture shown at time (microseconds from the slide's start, going forward from call
    // to call). Null when there is none to show.
    virtual const QImage& frameAt(qint64 time) = 0;
};

} // namespace kavori
