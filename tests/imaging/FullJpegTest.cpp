#include "imaging/FullJpeg.h"
#include "JpegFiles.h"
#include "imaging/PictureLoader.h"
#include "runtime/ScratchMemory.h"
#include "support/KavoriTest.h"
#include "support/PhotoLike.h"

#include <QImageReader>

#include <cstdio>
#include <vector>

#include <jpeglib.h>

using namespace kavori;
using namespace kavori::test;

namespace {

// libjpeg's own full decode with its defaults (accurate integer inverse DCT, smooth
// upsampling), RGB out.
QImage libjpegFull(const QByteArray& file, bool grey)
{
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(file.constData()),
                 static_cast<unsigned long>(file.size()));
    jpeg_read_header(&info, TRUE);
    info.out_color_space = grey ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_start_decompress(&info);
    QImage image(int(info.output_width), int(info.output_height),
                 grey ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = image.scanLine(int(info.output_scanline));
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    return image;
}

int largestDifference(const QImage& a, const QImage& b)
{
    const QImage x = a.convertToFormat(QImage::Format_RGB32);
    const QImage y = b.convertToFormat(QImage::Format_RGB32);
    int largest = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
        const auto* q = reinterpret_cast<const QRgb*>(y.constScanLine(row));
        for (int col = 0; col < x.width(); ++col)
            largest = std::max({largest, qAbs(qRed(p[col]) - qRed(q[col])),
                                qAbs(qGreen(p[col]) - qGreen(q[col])),
                                qAbs(qBlue(p[col]) - qBlue(q[col]))});
    }
    return largest;
}

} // namespace

class FullJpegTest : public KavoriTest {};

// Every layout the full decode takes, at sizes that end inside a block and inside a chroma
// sample: the same picture for any number of pieces, within one level of libjpeg's.
TEST_F(FullJpegTest, SameAsLibjpegForAnyNumberOfPieces)
{
    struct Case {
        int width, height, h, v;
        bool grey;
        int restart;
        bool flatTop;
    };
    const Case cases[] = {
        {1203, 901, 2, 2, false, 0, true},  {1203, 901, 2, 1, false, 0, false},
        {1203, 901, 1, 1, false, 0, false}, {1203, 901, 1, 1, true, 0, true},
        {1001, 667, 2, 2, false, 7, false}, {17, 9, 2, 2, false, 0, false},
        {1, 1, 2, 2, false, 0, false},      {2, 3, 2, 1, false, 0, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << "x" << c.height << " " << c.h << "x" << c.v
                                        << (c.grey ? " grey" : "") << " restart " << c.restart);
        JpegLayout layout;
        layout.lumaH = c.h;
        layout.lumaV = c.v;
        layout.grey = c.grey;
        layout.restartMcus = c.restart;
        const QByteArray file = EncodeJpeg(PhotoLike(c.width, c.height, 3, c.flatTop), layout);
        const QImage one = DecodeFullJpeg(file, 1);
        ASSERT_FALSE(one.isNull());
        EXPECT_EQ(one.size(), QSize(c.width, c.height));
        EXPECT_EQ(one.format(), c.grey ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
        for (const int parts : {2, 3, 5, 8}) {
            const QImage many = DecodeFullJpeg(file, parts);
            EXPECT_TRUE(many == one) << parts << " pieces";
        }
        // Machines without wide vectors get the same picture.
        UseWideVectorsForFullJpeg(false);
        const QImage plain = DecodeFullJpeg(file, 3);
        UseWideVectorsForFullJpeg(true);
        EXPECT_TRUE(plain == one) << "plain paths";
        EXPECT_LE(largestDifference(one, libjpegFull(file, c.grey)), 1);
    }
}

// Layouts it leaves to the usual reader, and damaged files: null, never a crash; the loader
// still reads what libjpeg can. A progressive file is ours too, within a level of libjpeg's.
TEST_F(FullJpegTest, OtherLayoutsAndDamagedFilesAreLeftToTheReader)
{
    const QImage photo = PhotoLike(320, 240, 4);
    JpegLayout progressive;
    progressive.progressive = true;
    const QByteArray progressiveFile = EncodeJpeg(photo, progressive);
    const QImage ours = DecodeFullJpeg(progressiveFile);
    ASSERT_EQ(ours.size(), photo.size());
    EXPECT_LE(largestDifference(ours, libjpegFull(progressiveFile, false)), 1);

    JpegLayout cmyk;
    cmyk.cmyk = true;
    JpegLayout rgb;
    rgb.storedRgb = true;
    JpegLayout tall; // chroma halved only down
    tall.lumaH = 1;
    tall.lumaV = 2;
    for (const JpegLayout& layout : {cmyk, rgb, tall}) {
        const QByteArray file = EncodeJpeg(photo, layout);
        EXPECT_TRUE(DecodeFullJpeg(file).isNull());
        const QString path = writeFile(QStringLiteral("other.jpg"), file);
        EXPECT_EQ(LoadPicture(path).size(), photo.size());
    }
    const QByteArray file = EncodeJpeg(photo, JpegLayout());
    for (const qsizetype cut : {qsizetype(0), qsizetype(100), file.size() / 2})
        EXPECT_TRUE(DecodeFullJpeg(file.left(cut)).isNull()) << cut;
    // Only the end marker lost: every block is there.
    EXPECT_EQ(DecodeFullJpeg(file.left(file.size() - 2)).size(), photo.size());
    QByteArray scrambled = file;
    for (qsizetype i = file.size() / 3; i < file.size() - 2; i += 97)
        scrambled[i] = char(scrambled[i] ^ 0x5A);
    const QImage damaged = DecodeFullJpeg(scrambled); // null or a picture, never a crash
    if (!damaged.isNull()) {
        EXPECT_EQ(damaged.size(), photo.size());
    }

    // Through the loader: the full decode lands in the picture stock, turned by its EXIF.
    JpegLayout turned;
    turned.orientation = 6;
    const QString path = writeFile(QStringLiteral("turned.jpg"), EncodeJpeg(photo, turned));
    const QImage loaded = LoadPicture(path);
    EXPECT_EQ(loaded.size(), photo.size().transposed());
    // Wanted at more than half its size, it is decoded whole and scaled: turned first, the
    // size that fits, and the picture the reader's own decode-and-scale gives.
    const QImage fitted = LoadPicture(path, QSize(200, 300));
    EXPECT_EQ(fitted.size(), QSize(200, 266));
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage theirs = reader.read().scaled(fitted.size(), Qt::IgnoreAspectRatio,
                                               Qt::SmoothTransformation);
    EXPECT_LE(largestDifference(fitted, theirs), 2);
}
