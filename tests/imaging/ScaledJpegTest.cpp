#include "imaging/ScaledJpeg.h"
#include "JpegFiles.h"
#include "imaging/FullJpeg.h"
#include "imaging/PictureLoader.h"
#include "support/KavoriTest.h"
#include "support/PhotoLike.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <cmath>

using namespace kavori;
using namespace kavori::test;

namespace {

// libjpeg's own picture at the same scale, read through Qt.
QImage libjpegAt(const QByteArray& file, int denominator)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "jpeg");
    const QSize size = reader.size();
    reader.setScaledSize(QSize((size.width() + denominator - 1) / denominator,
                               (size.height() + denominator - 1) / denominator));
    return reader.read();
}

struct Difference {
    double mean = 0;
    int largest = 0;
};

Difference compare(const QImage& a, const QImage& b)
{
    Difference d;
    const QImage x = a.convertToFormat(QImage::Format_RGB32);
    const QImage y = b.convertToFormat(QImage::Format_RGB32);
    qint64 sum = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
        const auto* q = reinterpret_cast<const QRgb*>(y.constScanLine(row));
        for (int col = 0; col < x.width(); ++col) {
            for (const int channel :
                 {qAbs(qRed(p[col]) - qRed(q[col])), qAbs(qGreen(p[col]) - qGreen(q[col])),
                  qAbs(qBlue(p[col]) - qBlue(q[col]))}) {
                sum += channel;
                d.largest = qMax(d.largest, channel);
            }
        }
    }
    d.mean = double(sum) / (3.0 * x.width() * x.height());
    return d;
}

// Each target pixel the exact mean of the source area it covers (pixels cut by its edges
// counting by the part inside), rounded once: what a scaled decode should come close to.
QImage areaAverage(const QImage& picture, const QSize& size)
{
    const QImage source = picture.convertToFormat(QImage::Format_RGB32);
    const double sx = double(source.width()) / size.width();
    const double sy = double(source.height()) / size.height();
    auto overlap = [](double begin, double end, int s) {
        return std::max(0.0, std::min(end, s + 1.0) - std::max(begin, double(s)));
    };
    QImage result(size, QImage::Format_RGB32);
    for (int ty = 0; ty < size.height(); ++ty) {
        for (int tx = 0; tx < size.width(); ++tx) {
            double sums[3] = {};
            for (int y = int(ty * sy); y < std::min(source.height(), int(std::ceil((ty + 1) * sy)));
                 ++y) {
                const double wy = overlap(ty * sy, (ty + 1) * sy, y);
                const auto* line = reinterpret_cast<const QRgb*>(source.constScanLine(y));
                for (int x = int(tx * sx);
                     x < std::min(source.width(), int(std::ceil((tx + 1) * sx))); ++x) {
                    const double w = wy * overlap(tx * sx, (tx + 1) * sx, x);
                    sums[0] += w * qRed(line[x]);
                    sums[1] += w * qGreen(line[x]);
                    sums[2] += w * qBlue(line[x]);
                }
            }
            const double area = sx * sy;
            result.setPixel(tx, ty,
                            qRgb(int(std::lround(sums[0] / area)), int(std::lround(sums[1] / area)),
                                 int(std::lround(sums[2] / area))));
        }
    }
    return result;
}

} // namespace

class ScaledJpegTest : public KavoriTest {};

// Every usual sampling, grey, and restart markers, at every scale: the picture looks like
// libjpeg's, and cutting the data into pieces decoded side by side changes no pixel.
TEST_F(ScaledJpegTest, UsualLayoutsLookLikeLibjpegAndPiecesChangeNothing)
{
    struct Case {
        const char* name;
        JpegLayout layout;
    };
    const QList<Case> cases = {
        {"4:2:0", {2, 2}},
        {"4:2:2", {2, 1}},
        {"4:4:4", {1, 1}},
        {"4:4:0", {1, 2}},
        {"grey", {1, 1, true}},
        {"4:2:0 restarts", {2, 2, false, false, false, false, 7}},
        {"grey restarts", {1, 1, true, false, false, false, 5}},
    };
    // An odd size leaves partial blocks and MCUs at the right and bottom edges.
    const QImage picture = PhotoLike(203, 117, 3);
    for (const Case& c : cases) {
        const QByteArray file = EncodeJpeg(picture, c.layout);
        for (const int denominator : {2, 4, 8}) {
            const QImage ours = DecodeScaledJpeg(file, denominator, 1);
            const QImage theirs = libjpegAt(file, denominator);
            ASSERT_FALSE(ours.isNull()) << c.name << " 1/" << denominator;
            ASSERT_EQ(ours.size(), theirs.size()) << c.name << " 1/" << denominator;
            EXPECT_EQ(ours.isGrayscale(), c.layout.grey) << c.name;
            const Difference d = compare(ours, theirs);
            // libjpeg brings 4:2:0 chroma to the luma grid with a larger transform and, at 1/8,
            // repeats other chroma samples where ours blends them.
            EXPECT_LT(d.mean, denominator == 8 ? 3.5 : 2.5) << c.name << " 1/" << denominator;
            EXPECT_LT(d.largest, 40) << c.name << " 1/" << denominator;
            for (const int parts : {2, 3, 8})
                EXPECT_EQ(DecodeScaledJpeg(file, denominator, parts), ours)
                    << c.name << " 1/" << denominator << " in " << parts << " pieces";
        }
    }
}

// Asked for any size up to half the picture's, the decoder gives that size, looking like
// libjpeg's full picture smoothly scaled; a size that needs the full decode is left to libjpeg.
TEST_F(ScaledJpegTest, AnySizeUpToHalfLooksLikeASmoothScale)
{
    const QImage picture = PhotoLike(401, 301, 11);
    JpegLayout grey;
    grey.grey = true;
    for (const JpegLayout& layout : {JpegLayout{}, grey}) {
        const QByteArray file = EncodeJpeg(picture, layout);
        const QImage full = libjpegAt(file, 1);
        for (const QSize size : {QSize(200, 150), QSize(160, 120), QSize(97, 31), QSize(50, 38),
                                 QSize(7, 5), QSize(1, 1)}) {
            const QImage ours = DecodeJpegAtSize(file, size, 2);
            ASSERT_EQ(ours.size(), size);
            const QImage smooth =
                full.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            const Difference d = compare(ours, smooth);
            EXPECT_LT(d.mean, 3.0) << size.width() << "x" << size.height();
        }
        EXPECT_TRUE(DecodeJpegAtSize(file, QSize(202, 100)).isNull());
        EXPECT_TRUE(DecodeJpegAtSize(file, QSize(0, 10)).isNull());
    }
    // A plain picture stays plain at every size: the weights of each sample add up to one.
    QImage plain(333, 222, QImage::Format_RGB32);
    plain.fill(qRgb(30, 160, 90));
    const QByteArray file = EncodeJpeg(plain, {});
    for (const QSize size : {QSize(166, 111), QSize(100, 17), QSize(3, 90)}) {
        const QImage ours = DecodeJpegAtSize(file, size);
        for (const QPoint p : {QPoint(0, 0), QPoint(size.width() - 1, size.height() - 1),
                               QPoint(size.width() / 2, size.height() / 2)}) {
            const QColor c = ours.pixelColor(p);
            EXPECT_NEAR(c.red(), 30, 2);
            EXPECT_NEAR(c.green(), 160, 2);
            EXPECT_NEAR(c.blue(), 90, 2);
        }
    }
}

// Tiles of saturated colours, each 8 pixels square, so that at 1/8 every pixel has a colour of
// its own. At every scale the decode is no farther from the full decode averaged down than
// libjpeg's own decode at that scale (which the full decode's clamping of ringing chroma also
// keeps about 12 levels off on 4:2:0), and sizes reached from 1/8 and 1/4 stay within a few
// levels. Chroma kept only as one value per 16 x 16 pixels (62 levels off at 1/8), averaged
// before the conversion to RGB (which clamps), or rounded between the passes, falls far
// outside.
TEST_F(ScaledJpegTest, SaturatedColoursStayCloseToTheAveragedFullDecode)
{
    const QRgb colours[] = {qRgb(255, 0, 0),     qRgb(0, 255, 0),   qRgb(0, 0, 255),
                            qRgb(255, 255, 0),   qRgb(255, 0, 255), qRgb(0, 255, 255),
                            qRgb(250, 250, 250), qRgb(10, 10, 10),  qRgb(255, 128, 0)};
    QImage picture(256, 192, QImage::Format_RGB32);
    uint32_t seed = 12345;
    for (int ty = 0; ty < 24; ++ty)
        for (int tx = 0; tx < 32; ++tx) {
            seed = seed * 1103515245u + 12345u;
            const QRgb colour = colours[(seed >> 16) % 9];
            for (int y = 0; y < 8; ++y)
                for (int x = 0; x < 8; ++x)
                    picture.setPixel(tx * 8 + x, ty * 8 + y, colour);
        }
    for (const JpegLayout& layout : {JpegLayout{}, JpegLayout{1, 1}}) {
        const QByteArray file = EncodeJpeg(picture, layout);
        const QImage full = libjpegAt(file, 1);
        const char* name = layout.lumaH == 2 ? "4:2:0" : "4:4:4";
        for (const int denominator : {2, 4, 8}) {
            const QImage ours = DecodeScaledJpeg(file, denominator, 2);
            ASSERT_EQ(ours.size(), QSize(256 / denominator, 192 / denominator));
            const QImage reference = areaAverage(full, ours.size());
            const Difference d = compare(ours, reference);
            const Difference theirs = compare(libjpegAt(file, denominator), reference);
            EXPECT_LE(d.mean, theirs.mean + 0.1) << name << " 1/" << denominator;
            EXPECT_LE(d.largest, theirs.largest + 4) << name << " 1/" << denominator;
            EXPECT_LT(d.mean, 13.0) << name << " 1/" << denominator;
        }
        for (const QSize size : {QSize(25, 19), QSize(50, 37)}) {
            const QImage ours = DecodeJpegAtSize(file, size, 2);
            ASSERT_EQ(ours.size(), size);
            const Difference s = compare(ours, areaAverage(full, size));
            EXPECT_LT(s.mean, 6.0) << name << " " << size.width() << "x" << size.height();
            EXPECT_LE(s.largest, 40) << name << " " << size.width() << "x" << size.height();
        }
    }
}

// At an eighth each block is its mean. Over a whole photo the means of the full decode's blocks
// are unrounded; rounding each eighth's exact halves up (common at odd quantiser steps) would
// lift the picture by about 1/16 of a level.
TEST_F(ScaledJpegTest, EighthsAreNotLiftedByRounding)
{
    for (const int quality : {90, 95}) {
        const QByteArray file = EncodeJpeg(PhotoLike(800, 600, 3), {1, 1, true, false, false,
                                                                    false, 0, quality});
        const QImage full = libjpegAt(file, 1).convertToFormat(QImage::Format_Grayscale8);
        const QImage ours = DecodeScaledJpeg(file, 8, 1).convertToFormat(QImage::Format_Grayscale8);
        ASSERT_EQ(ours.size(), QSize(100, 75));
        auto mean = [](const QImage& image) {
            qint64 sum = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    sum += image.constScanLine(y)[x];
            return double(sum) / (double(image.width()) * image.height());
        };
        EXPECT_NEAR(mean(ours), mean(full), 0.03) << "quality " << quality;
    }
}

// At 1/2, 4:2:0 chroma goes through the full decode's 8 x 8 transform, which machines without
// AVX2 run on its plain path: the pictures are the same either way.
TEST_F(ScaledJpegTest, HalfScaleChromaIsTheSameOnThePlainPath)
{
    const QByteArray file = EncodeJpeg(PhotoLike(203, 117, 5), {});
    const QImage wide = DecodeScaledJpeg(file, 2, 2);
    UseWideVectorsForFullJpeg(false);
    const QImage plain = DecodeScaledJpeg(file, 2, 2);
    UseWideVectorsForFullJpeg(true);
    ASSERT_FALSE(wide.isNull());
    EXPECT_EQ(plain, wide);
}

// Pieces start at guessed places in the data; where the data is spread unevenly (a plain sky
// over a busy ground) or coded finely or coarsely, they still fall in step.
TEST_F(ScaledJpegTest, PiecesFallInStepOnAnyData)
{
    for (const bool flatTop : {false, true}) {
        for (const int quality : {20, 75, 100}) {
            JpegLayout layout;
            layout.quality = quality;
            const QByteArray file = EncodeJpeg(PhotoLike(640, 480, quality, flatTop), layout);
            const QImage whole = DecodeScaledJpeg(file, 2, 1);
            ASSERT_EQ(whole.size(), QSize(320, 240));
            for (int parts = 2; parts <= 9; ++parts)
                EXPECT_EQ(DecodeScaledJpeg(file, 2, parts), whole)
                    << "quality " << quality << (flatTop ? " flat top" : "") << ", " << parts
                    << " pieces";
        }
    }
    // A plain bottom half cut into many pieces: the last pieces hold far more blocks than
    // their share of the bits and run out of room, which the joining decoder makes up for.
    const QImage flatBottom = PhotoLike(640, 480, 7, true).mirrored(false, true);
    const QByteArray file = EncodeJpeg(flatBottom, {});
    const QImage whole = DecodeScaledJpeg(file, 4, 1);
    for (const int parts : {16, 40})
        EXPECT_EQ(DecodeScaledJpeg(file, 4, parts), whole) << parts << " pieces";
}

// CMYK and stored-RGB files are not ours to decode; the picture loader then reads them the
// usual way at the size asked for.
TEST_F(ScaledJpegTest, OtherKindsAreReadTheUsualWay)
{
    const QImage picture = PhotoLike(160, 120, 5);
    JpegLayout cmyk;
    cmyk.cmyk = true;
    JpegLayout rgb;
    rgb.storedRgb = true;
    for (const JpegLayout& layout : {cmyk, rgb}) {
        const QByteArray file = EncodeJpeg(picture, layout);
        EXPECT_TRUE(DecodeScaledJpeg(file, 2).isNull());
        const QImage loaded =
            LoadPicture(writeFile(QStringLiteral("other.jpg"), file), QSize(80, 80));
        EXPECT_EQ(loaded.size(), QSize(80, 60));
    }
    EXPECT_TRUE(DecodeScaledJpeg(EncodeJpeg(picture, {}), 1).isNull()); // full size is libjpeg's
    EXPECT_TRUE(DecodeScaledJpeg(QByteArray("\xFF\xD8\xFF\xD9", 4), 2).isNull());
}

// Cut short anywhere or with bytes flipped, a file gives no picture or one of the right size,
// never a crash or a read outside the data; the loader then falls back to the usual reader.
TEST_F(ScaledJpegTest, DamagedFilesFailCleanly)
{
    const QImage picture = PhotoLike(96, 64, 9);
    JpegLayout restarts;
    restarts.restartMcus = 2;
    for (const JpegLayout& layout : {JpegLayout{}, restarts}) {
        const QByteArray file = EncodeJpeg(picture, layout);
        for (qsizetype cut = 0; cut < file.size() - 3; cut += 37) {
            EXPECT_TRUE(DecodeScaledJpeg(file.left(cut), 2, 3).isNull()) << "cut at " << cut;
        }
        for (int seed = 1; seed <= 200; ++seed) {
            QByteArray flipped = file;
            const qsizetype at = (qsizetype(seed) * 7919) % flipped.size();
            flipped[at] = char(flipped[at] ^ (1 << (seed % 8)));
            for (const int parts : {1, 4}) {
                const QImage image = DecodeScaledJpeg(flipped, 4, parts);
                if (!image.isNull()) {
                    EXPECT_EQ(image.size(), QSize(24, 16)) << "flip at " << at;
                }
            }
        }
        const QString path = writeFile(QStringLiteral("cut.jpg"), file.left(file.size() / 2));
        EXPECT_EQ(LoadPicture(path, QSize(48, 48)).size(), QSize(48, 32));

        // A frame header claiming 65535 x 65535 pixels over a few kilobytes of data.
        QByteArray huge = file;
        const qsizetype frame = huge.indexOf(QByteArray("\xFF\xC0", 2));
        ASSERT_GT(frame, 0);
        for (int i = 5; i < 9; ++i)
            huge[frame + i] = char(0xFF);
        for (const int denominator : {2, 8})
            EXPECT_TRUE(DecodeScaledJpeg(huge, denominator).isNull());
        LoadPicture(writeFile(QStringLiteral("huge.jpg"), huge), QSize(100, 100));

        // An AC Huffman table whose codes of 16 bits all claim to be one bit long: far more
        // codes than one bit can tell apart.
        QByteArray overfull = file;
        qsizetype table = -1;
        while ((table = overfull.indexOf(QByteArray("\xFF\xC4", 2), table + 1)) > 0 &&
               overfull[table + 4] != char(0x10)) {
        }
        ASSERT_GT(table, 0);
        const qsizetype counts = table + 5; // marker, length, class and slot
        overfull[counts] = char(overfull[counts] + overfull[counts + 15]);
        overfull[counts + 15] = 0;
        EXPECT_TRUE(DecodeScaledJpeg(overfull, 2).isNull());
    }
}

// A camera's orientation mark turns the picture, and the turned shape is what is fitted.
TEST_F(ScaledJpegTest, ExifOrientationTurnsThePicture)
{
    QImage picture(240, 160, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    for (int y = 0; y < 160; ++y)
        for (int x = 0; x < 120; ++x)
            picture.setPixel(x, y, qRgb(255, 0, 0)); // left half red
    struct Turn {
        int orientation;
        QSize size;
        QPoint red; // a point of the red half, in the fitted picture
    };
    const QList<Turn> turns = {
        {1, QSize(60, 40), QPoint(10, 20)},
        {3, QSize(60, 40), QPoint(50, 20)}, // half a turn: red goes right
        {6, QSize(40, 60), QPoint(20, 10)}, // a quarter clockwise: red goes up
        {8, QSize(40, 60), QPoint(20, 50)}, // a quarter anticlockwise: red goes down
    };
    for (const Turn& t : turns) {
        JpegLayout layout;
        layout.orientation = t.orientation;
        const QString path = writeFile(QStringLiteral("turned.jpg"), EncodeJpeg(picture, layout));
        const QImage fitted = LoadPicture(path, QSize(60, 60));
        ASSERT_EQ(fitted.size(), t.size) << "orientation " << t.orientation;
        const QColor red = fitted.pixelColor(t.red);
        EXPECT_GT(red.red(), 200) << "orientation " << t.orientation;
        EXPECT_LT(red.blue(), 60) << "orientation " << t.orientation;
        EXPECT_EQ(LoadPicture(path).size(), t.size * 4); // the usual reader agrees on the shape
    }
}
