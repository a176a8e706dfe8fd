#pragma once

#include <QByteArray>
#include <QImage>

namespace kavori::test {

// JPEG files of every layout, written with libjpeg so the tests can ask for what Qt's writer
// does not offer (samplings, restart markers, CMYK, stored RGB, EXIF orientation).
struct JpegLayout {
    int lumaH = 2; // luma sampling; chroma is always 1 x 1
    int lumaV = 2;
    bool grey = false;
    bool cmyk = false;
    bool storedRgb = false;
    bool progressive = false;
    int restartMcus = 0;
    int quality = 90;
    int orientation = 0; // EXIF orientation 1 to 8; 0 writes no EXIF block
};

QByteArray EncodeJpeg(const QImage& picture, const JpegLayout& layout);

} // namespace kavori::test
