#pragma once

#include "PictureReader.h"

namespace kavori {

// JPEG XL pictures through libjxl.
class JxlReader : public PictureReader {
public:
    PictureHeader readHeader(const QByteArray& file) const override;
    QImage read(const QByteArray& file, const QSize& target) const override;
};

} // namespace kavori
