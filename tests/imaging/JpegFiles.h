#pragma once

#include <QByteArray>
#include <QImage>

#include <vector>

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

// One scan of a progressive file: its components (frame indexes), its band of zigzag positions,
// the bit sent before (0 for a first scan) and the bit it sends.
struct ProgressiveScan {
    std::vector<int> components;
    int start = 0;
    int end = 0;
    int high = 0;
    int low = 0;
};

// The same coefficients coded progressively by libjpeg's transcoder, as jpegtran does: with
// libjpeg's usual scans when none are given; restart markers every restartMcus MCUs.
QByteArray MakeProgressive(const QByteArray& baseline,
                           const std::vector<ProgressiveScan>& scans = {}, int restartMcus = 0);

} // namespace kavori::test
