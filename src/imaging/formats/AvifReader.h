#pragma once

#include "PictureReader.h"

namespace kavori {

// AVIF pictures through libavif (AV1 stills in the HEIF container).
class AvifReader : public PictureReader {
public:
    PictureHeader readHeader(const QByteArray& file) const override;
    QImage read(const QByteArray& file, const QSize& target) const override;
};

} // namespace kavori
