#pragma once

#include "PictureReader.h"

namespace kavori {

// HEIF and HEIC pictures through libheif.
class HeifReader : public PictureReader {
public:
    PictureHeader readHeader(const QByteArray& file) const override;
    QImage read(const QByteArray& file, const QSize& target) const override;
};

} // namespace kavori
