#include "ModernFiles.h"
#include "imaging/ExifOrientation.h"
#include "imaging/FileInfo.h"
#include "imaging/ImageTypes.h"
#include "imaging/JpegHeader.h"
#include "imaging/PictureLoader.h"
#include "imaging/formats/PictureReader.h"
#include "settings/Settings.h"
#include "slideshow/SlideList.h"
#include "support/KavoriTest.h"

#include <QColorSpace>
#include <QFile>

#include <functional>

using namespace kavori;
using namespace kavori::test;

namespace {

const QRgb kTopLeft = qRgb(220, 40, 40);
const QRgb kTopRight = qRgb(40, 200, 40);
const QRgb kBottomLeft = qRgb(40, 40, 220);
const QRgb kBottomRight = qRgb(230, 230, 230);

// Four quadrants of plain colour, so any turn or mirror shows in the corners.
QImage quadrants(QSize size = QSize(160, 120))
{
    QImage image(size, QImage::Format_RGB32);
    const int w = size.width() / 2, h = size.height() / 2;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y,
                           y < h ? (x < w ? kTopLeft : kTopRight)
                                 : (x < w ? kBottomLeft : kBottomRight));
    return image;
}

using Encoder = std::function<QByteArray(const QImage&, const ModernOptions&, QString*)>;

} // namespace

class ModernPicturesTest : public KavoriTest {
protected:
    // The colour near a corner (a quarter of the way in), as the viewer shows it.
    static QRgb corner(const QImage& image, bool right, bool bottom)
    {
        const int x = right ? image.width() * 3 / 4 : image.width() / 4;
        const int y = bottom ? image.height() * 3 / 4 : image.height() / 4;
        return image.pixel(x, y);
    }
    static void expectNear(QRgb actual, QRgb expected, int tolerance, const std::string& what)
    {
        EXPECT_NEAR(qRed(actual), qRed(expected), tolerance) << what;
        EXPECT_NEAR(qGreen(actual), qGreen(expected), tolerance) << what;
        EXPECT_NEAR(qBlue(actual), qBlue(expected), tolerance) << what;
    }

    // Upright and turned pictures open at their size and at a target, corners in place; cut
    // short, they fail without a crash. Empty when the encoder is missing (why says so).
    void checkType(const QString& ext, const Encoder& encode, int tolerance, QString* why)
    {
        const std::string type = ext.toStdString();
        const QByteArray upright = encode(quadrants(), {}, why);
        if (upright.isEmpty())
            return;
        const QString path = writeFile(QStringLiteral("pics/upright.") + ext, upright);
        ASSERT_TRUE(IsImageFile(path)) << type;
        EXPECT_EQ(PictureSize(path), QSize(160, 120)) << type;
        const QImage full = LoadPicture(path);
        ASSERT_EQ(full.size(), QSize(160, 120)) << type;
        expectNear(corner(full, false, false), kTopLeft, tolerance, type + " top left");
        expectNear(corner(full, true, false), kTopRight, tolerance, type + " top right");
        expectNear(corner(full, false, true), kBottomLeft, tolerance, type + " bottom left");
        expectNear(corner(full, true, true), kBottomRight, tolerance, type + " bottom right");
        const QImage small = LoadPicture(path, QSize(40, 40));
        ASSERT_EQ(small.size(), QSize(40, 30)) << type;
        expectNear(corner(small, true, false), kTopRight, tolerance, type + " small top right");
        EXPECT_EQ(LoadPicture(path, QSize(400, 400)).size(), QSize(160, 120)) << type;

        // Orientation 6: shown a quarter turn clockwise, so the bottom left comes to the top.
        ModernOptions turned;
        turned.orientation = 6;
        const QString turnedPath =
            writeFile(QStringLiteral("pics/turned.") + ext, encode(quadrants(), turned, why));
        EXPECT_EQ(PictureSize(turnedPath), QSize(120, 160)) << type;
        const QImage upright6 = LoadPicture(turnedPath);
        ASSERT_EQ(upright6.size(), QSize(120, 160)) << type;
        expectNear(corner(upright6, false, false), kBottomLeft, tolerance, type + " turned");
        expectNear(corner(upright6, true, false), kTopLeft, tolerance, type + " turned");
        expectNear(corner(upright6, true, true), kTopRight, tolerance, type + " turned");
        const QImage turnedSmall = LoadPicture(turnedPath, QSize(60, 60));
        ASSERT_EQ(turnedSmall.size(), QSize(45, 60)) << type;
        expectNear(corner(turnedSmall, false, false), kBottomLeft, tolerance, type + " turned");

        // Mirrored left to right (orientation 2).
        ModernOptions mirrored;
        mirrored.orientation = 2;
        const QImage mirror = LoadPicture(
            writeFile(QStringLiteral("pics/mirror.") + ext, encode(quadrants(), mirrored, why)));
        ASSERT_EQ(mirror.size(), QSize(160, 120)) << type;
        expectNear(corner(mirror, false, false), kTopRight, tolerance, type + " mirrored");

        // Damaged: cut short at several places, or only the first bytes of a real file.
        for (const qsizetype keep : {upright.size() / 2, upright.size() - 20, qsizetype(40)}) {
            const QString cut =
                writeFile(QStringLiteral("pics/cut%1.").arg(keep) + ext, upright.left(keep));
            EXPECT_TRUE(LoadPicture(cut).isNull()) << type << " cut to " << keep;
            EXPECT_TRUE(LoadPicture(cut, QSize(20, 20)).isNull()) << type << " cut to " << keep;
        }
        EXPECT_TRUE(LoadPicture(writeFile(QStringLiteral("pics/empty.") + ext, {})).isNull());
        EXPECT_FALSE(
            PictureSize(writeFile(QStringLiteral("pics/text.") + ext, "not a picture")).isValid());
    }
};

TEST_F(ModernPicturesTest, TodaysTypesJoinTheOneListUnlessClassicOnly)
{
    const char* const modern[] = {"a.png",  "a.PNG",  "a.tif",  "a.tiff", "a.webp",
                                  "a.avif", "a.heic", "a.HEIF", "a.jxl"};
    for (const char* name : modern) {
        EXPECT_TRUE(IsImageFile(QString::fromLatin1(name))) << name;
        EXPECT_TRUE(IsSlideFile(QString::fromLatin1(name))) << name;
        EXPECT_EQ(DescribeFileType(QString::fromLatin1(name)).kind, FileKind::Image) << name;
    }
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.heic")).description,
              "High Efficiency Image File Format (.HEIC or .HEIF)");
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.tiff")).description,
              "Tagged Image File Format (.TIF or .TIFF)");
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.webp")).description, "WebP Image (.WEBP)");
    EXPECT_FALSE(IsImageFile(QStringLiteral("a.png.txt")));
    EXPECT_FALSE(IsImageFile(QStringLiteral("png")));
    const QString filter = ImageOpenFilter();
    EXPECT_TRUE(filter.startsWith(QStringLiteral(
        "All Supported Images (*.bmp *.dib *.rle *.jpg *.jif *.jpe *.jpeg *.gif *.wmf *.emf *.ico "
        "*.cur *.png *.tif *.tiff *.webp *.avif *.heic *.heif *.jxl);;Windows Bitmap")));
    EXPECT_TRUE(filter.endsWith(QStringLiteral(";;HEIF (*.heic *.heif);;JPEG XL (*.jxl)")));
    EXPECT_TRUE(SlideFilePatterns().contains(QStringLiteral("*.heic")));
    EXPECT_TRUE(SlideFilePatterns().contains(QStringLiteral("*.mpeg")));
    EXPECT_EQ(ImageExtensions().size(), 12 + 9 - 1); // .HEIC and .HEIF share a row, as do .TIF

    // Classic only: the twelve, their filter and texts exactly as they have always been.
    CurrentSettings().ClassicTypesOnly = true;
    for (const char* name : modern) {
        EXPECT_FALSE(IsImageFile(QString::fromLatin1(name))) << name;
        EXPECT_FALSE(IsSlideFile(QString::fromLatin1(name))) << name;
        EXPECT_EQ(DescribeFileType(QString::fromLatin1(name)).kind, FileKind::Unknown) << name;
    }
    EXPECT_TRUE(IsImageFile(QStringLiteral("a.JPEG")));
    EXPECT_EQ(ImageExtensions().size(), 12);
    EXPECT_EQ(ImageOpenFilter(),
              "All Supported Images (*.bmp *.dib *.rle *.jpg *.jif *.jpe *.jpeg *.gif *.wmf *.emf "
              "*.ico *.cur);;Windows Bitmap (*.bmp *.dib *.rle);;JPEG (*.jpg *.jif *.jpe "
              "*.jpeg);;Graphics Interchange Format (*.gif);;Metafiles (*.wmf *.emf);;Icons and "
              "Cursors (*.ico *.cur)");
    EXPECT_FALSE(SlideFilePatterns().contains(QStringLiteral("*.png")));
    const QString png = writeFile(QStringLiteral("p.png"), EncodePng(quadrants(), {}));
    EXPECT_TRUE(LoadPicture(png).isNull());
    EXPECT_FALSE(FileInformation(png).refusal.isEmpty());
    CurrentSettings().ClassicTypesOnly = false;
    EXPECT_EQ(LoadPicture(png).size(), QSize(160, 120));
}

TEST_F(ModernPicturesTest, PngTiffAndWebpThroughQt)
{
    QString why;
    const auto png = [](const QImage& p, const ModernOptions& o, QString*) {
        return EncodePng(p, o);
    };
    const auto tiff = [](const QImage& p, const ModernOptions& o, QString*) {
        return EncodeTiff(p, o);
    };
    const auto webp = [](const QImage& p, const ModernOptions& o, QString*) {
        return EncodeWebp(p, o);
    };
    checkType(QStringLiteral("png"), png, 0, &why);
    checkType(QStringLiteral("tif"), tiff, 0, &why);
    checkType(QStringLiteral("webp"), webp, 12, &why);

    // A TIFF of several pages shows its first.
    QImage second(30, 20, QImage::Format_RGB32);
    second.fill(Qt::black);
    const QString pages = writeFile(QStringLiteral("pages.tiff"), TwoPageTiff(quadrants(), second));
    const QImage shown = LoadPicture(pages);
    ASSERT_EQ(shown.size(), QSize(160, 120));
    expectNear(corner(shown, false, false), kTopLeft, 0, "first page");
    EXPECT_EQ(PictureSize(pages), QSize(160, 120));

    // An animated WebP plays like an animated GIF and shows its first frame when still.
    const QString animated =
        writeFile(QStringLiteral("moving.webp"), AnimatedWebp(quadrants(QSize(30, 20)), second));
    EXPECT_TRUE(IsAnimatedPicture(animated));
    const QImage still = LoadPicture(animated);
    ASSERT_EQ(still.size(), QSize(30, 20));
    expectNear(corner(still, false, false), kTopLeft, 12, "first frame");
    EXPECT_FALSE(
        IsAnimatedPicture(writeFile(QStringLiteral("still.webp"), EncodeWebp(quadrants(), {}))));
    CurrentSettings().ClassicTypesOnly = true;
    EXPECT_FALSE(IsAnimatedPicture(animated));
}

TEST_F(ModernPicturesTest, AvifThroughLibavif)
{
    QString why;
    checkType(QStringLiteral("avif"), EncodeAvif, 10, &why);
    if (!why.isEmpty())
        GTEST_SKIP() << why.toStdString();
}

TEST_F(ModernPicturesTest, HeifThroughLibheifWithItsThumbnail)
{
    QString why;
    checkType(QStringLiteral("heic"), EncodeHeif, 12, &why);
    if (!why.isEmpty())
        GTEST_SKIP() << why.toStdString();

    // A stored thumbnail large enough for the target is shown instead of the full picture; a
    // larger target decodes the picture itself. (The thumbnail is green to tell them apart.)
    QImage green(320, 240, QImage::Format_RGB32);
    green.fill(qRgb(30, 200, 30));
    ModernOptions withThumbnail;
    withThumbnail.thumbnail = green;
    withThumbnail.thumbnailBox = 160;
    const QString path = writeFile(QStringLiteral("thumb.heic"),
                                   EncodeHeif(quadrants(QSize(640, 480)), withThumbnail, &why));
    const QImage fromThumbnail = LoadPicture(path, QSize(100, 100));
    ASSERT_EQ(fromThumbnail.size(), QSize(100, 75));
    expectNear(corner(fromThumbnail, false, false), qRgb(30, 200, 30), 12, "thumbnail");
    const QImage fromPicture = LoadPicture(path, QSize(300, 300));
    ASSERT_EQ(fromPicture.size(), QSize(300, 225));
    expectNear(corner(fromPicture, false, false), kTopLeft, 12, "picture");
}

TEST_F(ModernPicturesTest, JpegXlThroughLibjxl)
{
    QString why;
    checkType(QStringLiteral("jxl"), EncodeJxl, 0, &why);
    if (!why.isEmpty())
        GTEST_SKIP() << why.toStdString();
}

TEST_F(ModernPicturesTest, DisplayP3PicturesAreShownInSrgb)
{
    // Two P3 colours and their sRGB values (worked out from the two gamuts' primaries).
    const QRgb p3Warm = qRgb(200, 100, 50), srgbWarm = qRgb(215, 93, 31);
    const QRgb p3Cool = qRgb(120, 120, 200), srgbCool = qRgb(120, 120, 206);
    QImage picture(800, 600, QImage::Format_RGB32);
    picture.fill(p3Warm);
    for (int y = 300; y < 600; ++y)
        for (int x = 0; x < 800; ++x)
            picture.setPixel(x, y, p3Cool);
    const QByteArray icc = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    picture.setColorSpace(QColorSpace::fromIccProfile(icc));

    const QString jpeg = root() + QStringLiteral("wide.jpg");
    ASSERT_TRUE(picture.save(jpeg, "JPEG", 100));
    EXPECT_EQ(ReadJpegIccProfile(readFile(jpeg)), icc);
    // Whole, through Qt's reader; at a quarter, through our own scaled decoder.
    for (const QSize target : {QSize(), QSize(200, 150)}) {
        const QImage shown = LoadPicture(jpeg, target);
        ASSERT_FALSE(shown.isNull());
        const std::string what = "JPEG at " + std::to_string(shown.width());
        expectNear(corner(shown, false, false), srgbWarm, 2, what);
        expectNear(corner(shown, true, true), srgbCool, 2, what);
        EXPECT_TRUE(shown.colorSpace() == QColorSpace::SRgb) << what;
    }
    EXPECT_TRUE(FileInformation(jpeg).lines.contains(QStringLiteral("Color profile: Display P3")));
    CurrentSettings().ClassicTypesOnly = true;
    EXPECT_EQ(FileInformation(jpeg).lines.size(), 3);
    CurrentSettings().ClassicTypesOnly = false;

    // The same in PNG, and a JPEG without a profile is left as stored.
    ModernOptions p3;
    p3.icc = icc;
    const QString png = writeFile(QStringLiteral("wide.png"), EncodePng(picture, p3));
    expectNear(corner(LoadPicture(png), false, false), srgbWarm, 2, "PNG");
    picture.setColorSpace(QColorSpace());
    const QString plain = root() + QStringLiteral("plain.jpg");
    ASSERT_TRUE(picture.save(plain, "JPEG", 100));
    expectNear(corner(LoadPicture(plain, QSize(200, 150)), false, false), p3Warm, 2, "plain");
    EXPECT_FALSE(PictureColorSpace(plain).isValid());

    // A profile cut into pieces over several segments is joined; a missing piece drops it.
    QByteArray split("\xFF\xD8", 2);
    for (int i = 1; i <= 3; ++i) {
        const QByteArray body = QByteArray("ICC_PROFILE\0", 12) + char(i) + char(3) +
                                icc.mid((i - 1) * icc.size() / 3, icc.size() / 3 + 3);
        if (i == 2)
            continue;
        split += QByteArray("\xFF\xE2", 2) + char((body.size() + 2) >> 8) +
                 char((body.size() + 2) & 0xff) + body;
    }
    EXPECT_TRUE(ReadJpegIccProfile(split).isEmpty());
}

TEST_F(ModernPicturesTest, LibraryPicturesCarryTheirProfileToTheScreen)
{
    const QByteArray icc = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(qRgb(200, 100, 50));
    ModernOptions p3;
    p3.icc = icc;
    QString why;
    const QByteArray jxl = EncodeJxl(picture, p3, &why);
    ASSERT_FALSE(jxl.isEmpty()) << why.toStdString();
    const QString path = writeFile(QStringLiteral("wide.jxl"), jxl);
    expectNear(LoadPicture(path).pixel(32, 32), qRgb(215, 93, 31), 3, "JPEG XL");
    const FileInfoResult info = FileInformation(path);
    EXPECT_EQ(info.lines.value(2), "JPEG XL (.JXL)  (64x64 pixels)");
    EXPECT_TRUE(info.lines.contains(QStringLiteral("Color profile: Display P3")))
        << info.lines.join(u'|').toStdString();

    const QByteArray avif = EncodeAvif(picture, p3, &why);
    if (avif.isEmpty())
        GTEST_SKIP() << why.toStdString();
    const QString avifPath = writeFile(QStringLiteral("wide.avif"), avif);
    expectNear(LoadPicture(avifPath).pixel(32, 32), qRgb(215, 93, 31), 8, "AVIF");
    EXPECT_TRUE(PictureColorSpace(avifPath) == QColorSpace::fromIccProfile(icc));
}

TEST_F(ModernPicturesTest, ExifOrientationBlocksOfBothByteOrders)
{
    EXPECT_EQ(ExifOrientation(ExifBlock(6)), 6);
    EXPECT_EQ(ExifOrientation(ExifBlock(8).mid(6)), 8); // without the "Exif" prefix
    // Big-endian, as cameras that write "MM" do.
    const QByteArray big("MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x03\0\0\0\0\0\0", 26);
    EXPECT_EQ(ExifOrientation(big), 3);
    // Damaged or strange blocks read as upright.
    EXPECT_EQ(ExifOrientation(ExifBlock(9)), 1);
    EXPECT_EQ(ExifOrientation(ExifBlock(6).left(20)), 1);
    EXPECT_EQ(ExifOrientation(QByteArray("II*\0\xff\xff\xff\x7f", 8)), 1);
    EXPECT_EQ(ExifOrientation({}), 1);
    EXPECT_EQ(ExifTransformation(6), QImageIOHandler::TransformationRotate90);
    EXPECT_EQ(ExifTransformation(0), QImageIOHandler::TransformationNone);
}

TEST_F(ModernPicturesTest, ScalingDownAveragesEveryPixel)
{
    // Alternate pixels of two colours average to their mean at any smaller size, and an alpha
    // channel is averaged like the others.
    QImage fine(400, 300, QImage::Format_RGBA8888);
    for (int y = 0; y < fine.height(); ++y)
        for (int x = 0; x < fine.width(); ++x)
            fine.setPixelColor(x, y,
                               (x + y) % 2 ? QColor(250, 10, 100, 255) : QColor(10, 250, 200, 55));
    for (const QSize target : {QSize(200, 200), QSize(100, 100), QSize(70, 70)}) {
        const QImage small = FitDecoded(fine, target);
        ASSERT_EQ(small.width(), target.width()) << target.width();
        const QColor mid = small.pixelColor(small.width() / 2, small.height() / 2);
        EXPECT_NEAR(mid.red(), 130, 2) << target.width();
        EXPECT_NEAR(mid.green(), 130, 2) << target.width();
        EXPECT_NEAR(mid.blue(), 150, 2) << target.width();
        EXPECT_NEAR(mid.alpha(), 155, 2) << target.width();
    }
    EXPECT_EQ(FitDecoded(fine, QSize(500, 500)).size(), QSize(400, 300));
    EXPECT_EQ(FitDecoded(fine, QSize(400, 1)).size(), QSize(1, 1));
}
