#include "ImageFiles.h"
#include "imaging/ImageTypes.h"
#include "imaging/Metafile.h"
#include "imaging/PcxDecoder.h"
#include "imaging/PictureLoader.h"
#include "imaging/TgaDecoder.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QImageWriter>
#include <QtEndian>

#include <sys/resource.h>
#include <unistd.h>

using namespace kavori;
using namespace kavori::test;

class ImageLoadingTest : public KavoriTest {
protected:
    static QColor at(const QImage& image, int x, int y) { return QColor(image.pixel(x, y)); }
};

TEST_F(ImageLoadingTest, TypesAreToldByExtension)
{
    for (const char* name : {"a.bmp", "a.DIB", "a.rle", "a.jpg", "a.JIF", "a.jpe", "a.jpeg",
                             "A.JPEG", "a.gif", "a.wmf", "a.emf", "a.ico", "a.CUR"})
        EXPECT_TRUE(IsImageFile(QString::fromLatin1(name))) << name;
    for (const char* name : {"a.pcx", "a.tga", "jpeg", "a.jpg.txt", "a.tif.txt", ""})
        EXPECT_FALSE(IsImageFile(QString::fromLatin1(name))) << name;
    // With only the classic types, today's are not pictures.
    CurrentSettings().ClassicTypesOnly = true;
    for (const char* name : {"a.tif", "a.tiff", "a.png"})
        EXPECT_FALSE(IsImageFile(QString::fromLatin1(name))) << name;
    CurrentSettings().ClassicTypesOnly = false;
    EXPECT_TRUE(IsImportFile(QStringLiteral("x.PCX")));
    EXPECT_TRUE(IsImportFile(QStringLiteral("x.tga")));

    EXPECT_EQ(DescribeFileType(QStringLiteral("a.jpe")).description,
              "JPEG (.JPG, .JIF, .JPE or .JPEG)");
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.rle")).description,
              "RLE4 or RLE8 Compressed Bitmap (.RLE)");
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.aiff")).description,
              "Wave Sound (.AU, .SND, .AIF, .AIFF, .AIFC)");
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.mpe")).description, "Active Movie (.MPE)");
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.MPEG")).description, "Active Movie (.MPEG)");
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.qt")).description,
              "Apple Quicktime (.MOV or .QT)");
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.rmi")).description,
              "MIDI Sequence (.MID or .RMI)");
    EXPECT_TRUE(IsSoundFile(QStringLiteral("x.mp3")));
    EXPECT_TRUE(IsMovieFile(QStringLiteral("x.avi")));
    EXPECT_FALSE(IsMovieFile(QStringLiteral("x.mp3")));
    EXPECT_EQ(DescribeFileType(QStringLiteral("a.xyz")).kind, FileKind::Unknown);

    // Animated: a GIF89a signature in any case; 87a and missing files are still pictures.
    const QString anim = writeFile(QStringLiteral("a.gif"), Gif("GIF89a", true));
    const QString lower = writeFile(QStringLiteral("b.GIF"), Gif("gif89a", true));
    const QString old = writeFile(QStringLiteral("c.gif"), Gif("GIF87a", false));
    EXPECT_TRUE(IsAnimatedGif(anim));
    EXPECT_TRUE(IsAnimatedGif(lower));
    EXPECT_FALSE(IsAnimatedGif(old));
    EXPECT_FALSE(IsAnimatedGif(root() + QStringLiteral("missing.gif")));
    EXPECT_FALSE(IsAnimatedGif(writeFile(QStringLiteral("d.bmp"), "GIF89a")));
    EXPECT_EQ(DescribeFileType(old).description, "Graphics Interchange Format (GIF87a)");
}

TEST_F(ImageLoadingTest, EveryPictureTypeLoads)
{
    // Bitmaps of every depth Qt writes, and JPEG under all its names.
    QImage source(64, 48, QImage::Format_RGB32);
    source.fill(qRgb(200, 40, 40));
    for (QImage::Format format :
         {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_RGB16, QImage::Format_RGB888,
          QImage::Format_ARGB32}) {
        const QString path = root() + QStringLiteral("depth%1.bmp").arg(int(format));
        source.convertToFormat(format).save(path, "BMP");
        EXPECT_EQ(LoadPicture(path).size(), QSize(64, 48)) << int(format);
    }
    for (const char* name : {"p.jpg", "p.jif", "p.jpe", "p.jpeg"}) {
        const QString path = root() + QString::fromLatin1(name);
        source.save(path, "JPEG", 95);
        const QImage jpeg = LoadPicture(path);
        ASSERT_EQ(jpeg.size(), QSize(64, 48)) << name;
        EXPECT_NEAR(at(jpeg, 32, 24).red(), 200, 8);
    }

    // GIF: the first frame as a still picture.
    const QImage gif = LoadPicture(writeFile(QStringLiteral("a.gif"), Gif("GIF89a", true)));
    ASSERT_EQ(gif.size(), QSize(2, 2));
    EXPECT_EQ(at(gif, 0, 0), QColor(Qt::black));
    EXPECT_EQ(at(gif, 1, 0), QColor(Qt::white));

    // Icons and cursors: the largest picture.
    for (bool cursor : {false, true}) {
        const QImage icon = LoadPicture(writeFile(
            cursor ? QStringLiteral("i.cur") : QStringLiteral("i.ico"), IconFile(cursor)));
        ASSERT_EQ(icon.size(), QSize(32, 32)) << cursor;
        EXPECT_EQ(at(icon, 16, 16), QColor(Qt::blue));
    }

    // Metafiles render at their own size.
    const QImage wmf = LoadPicture(writeFile(QStringLiteral("m.wmf"), RedWmf()));
    ASSERT_FALSE(wmf.isNull());
    EXPECT_NEAR(double(wmf.width()) / wmf.height(), 2.0, 0.1);
    EXPECT_EQ(at(wmf, wmf.width() / 2, wmf.height() / 2), QColor(Qt::red));
    const QImage emf = LoadPicture(writeFile(QStringLiteral("m.emf"), RedEmf()));
    ASSERT_FALSE(emf.isNull());
    EXPECT_EQ(at(emf, emf.width() / 2, emf.height() / 2), QColor(Qt::red));

    // PCX and TGA are imported, never opened.
    EXPECT_TRUE(LoadPicture(writeFile(QStringLiteral("x.pcx"), Pcx("8bit"))).isNull());
}

TEST_F(ImageLoadingTest, PcxAndTgaImportOfEveryLayout)
{
    for (const char* kind : {"8bit", "24bit", "planar16", "cga", "packed16"}) {
        const QImage pcx = ImportPicture(writeFile(QStringLiteral("p.pcx"), Pcx(kind)));
        ASSERT_EQ(pcx.size(), QSize(8, 4)) << kind;
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 8; ++x)
                ASSERT_EQ(at(pcx, x, y), SampleColour(x, y)) << kind << " " << x << "," << y;
    }
    const QImage mono = ImportPicture(writeFile(QStringLiteral("m.PCX"), Pcx("mono")));
    ASSERT_EQ(mono.size(), QSize(8, 4));
    EXPECT_EQ(at(mono, 6, 0), QColor(Qt::white)); // sample index 3
    EXPECT_EQ(at(mono, 0, 0), QColor(Qt::black));

    for (const char* kind : {"mapped", "rle24", "grey", "top16", "rle32"}) {
        const QImage tga = ImportPicture(writeFile(QStringLiteral("t.tga"), Tga(kind)));
        ASSERT_EQ(tga.size(), QSize(4, 3)) << kind;
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 4; ++x) {
                const QColor expected = SampleColour(x, y);
                const QColor got = at(tga, x, y);
                if (QByteArray(kind) == "grey")
                    ASSERT_EQ(got.red(), qGray(expected.rgb())) << x << "," << y;
                else
                    ASSERT_EQ(got, expected) << kind << " " << x << "," << y;
            }
    }
}

TEST_F(ImageLoadingTest, TargetSizeDecodesNoMoreThanNeeded)
{
    QImage big(800, 600, QImage::Format_RGB32);
    big.fill(qRgb(10, 120, 200));
    const QString jpeg = root() + QStringLiteral("big.jpg");
    big.save(jpeg, "JPEG", 90);
    EXPECT_EQ(LoadPicture(jpeg, QSize(160, 120)).size(), QSize(160, 120));
    EXPECT_EQ(LoadPicture(jpeg, QSize(200, 200)).size(), QSize(200, 150));
    EXPECT_EQ(LoadPicture(jpeg, QSize(2000, 2000)).size(), QSize(800, 600)); // never enlarged
    const QString bmp = root() + QStringLiteral("big.bmp");
    big.save(bmp, "BMP");
    EXPECT_EQ(LoadPicture(bmp, QSize(400, 400)).size(), QSize(400, 300));
    EXPECT_EQ(PictureSize(jpeg), QSize(800, 600));
    const QImage wmf = LoadPicture(writeFile(QStringLiteral("m.wmf"), RedWmf()), QSize(20, 20));
    EXPECT_LE(wmf.width(), 20);
}

// Every generated file, cut short and with bytes flipped, fails cleanly: no crash, no hang.
TEST_F(ImageLoadingTest, DamagedFilesFailCleanly)
{
    struct Sample {
        const char* name;
        QByteArray bytes;
        bool import;
    };
    QByteArray jpeg;
    {
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        QBuffer buffer(&jpeg);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPEG");
    }
    const QList<Sample> samples = {
        {"d.jpg", jpeg, false},
        {"e.gif", Gif("GIF89a", true), false},
        {"f.ico", IconFile(false), false},
        {"g.cur", IconFile(true), false},
        {"h.wmf", RedWmf(), false},
        {"i.emf", RedEmf(), false},
        {"j.pcx", Pcx("8bit"), true},
        {"k.pcx", Pcx("planar16"), true},
        {"l.tga", Tga("mapped"), true},
        {"m.tga", Tga("rle24"), true},
        {"n.tga", Tga("rle32"), true},
    };
    for (const Sample& s : samples) {
        const QString path = root() + QString::fromLatin1(s.name);
        auto load = [&](const QByteArray& bytes) {
            writeFile(path, bytes);
            return s.import ? ImportPicture(path) : LoadPicture(path);
        };
        ASSERT_FALSE(load(s.bytes).isNull()) << s.name;
        for (qsizetype cut :
             {qsizetype(0), qsizetype(1), qsizetype(10), s.bytes.size() / 2, s.bytes.size() - 1}) {
            const QImage image = load(s.bytes.left(cut));
            if (s.import && cut < s.bytes.size() - 769) { // runs of pixel data are missing
                EXPECT_TRUE(image.isNull()) << s.name << " cut at " << cut;
            }
        }
        for (int seed = 1; seed <= 40; ++seed) {
            QByteArray flipped = s.bytes;
            for (int k = 0; k < 3; ++k) {
                const qsizetype at = (seed * 7919 + k * 104729) % flipped.size();
                flipped[at] = char(flipped[at] ^ (0x5A + seed));
            }
            load(flipped);
        }
    }
    // Sizes that no real picture has are refused before any memory is taken.
    QByteArray huge = Tga("rle24");
    huge.replace(12, 4, QByteArray(4, char(0xff)));
    EXPECT_TRUE(DecodeTga(huge).isNull());
    QByteArray wide = Pcx("8bit");
    wide.replace(8, 4, QByteArray(4, char(0xff)));
    EXPECT_TRUE(DecodePcx(wide).isNull());
    EXPECT_TRUE(LoadPicture(root() + QStringLiteral("missing.bmp")).isNull());
    EXPECT_TRUE(LoadPicture(root()).isNull());
    EXPECT_TRUE(RenderSvg("<svg garbage").isNull());
}

TEST_F(ImageLoadingTest, MetafilesAtTheirStatedSize)
{
    // One inch at 1440 units per inch is 96 pixels, not 1440.
    const QString inch = writeFile(QStringLiteral("inch.wmf"), RedWmf(1440, 1440, 1440));
    const QImage wmf = LoadPicture(inch);
    ASSERT_FALSE(wmf.isNull());
    EXPECT_NEAR(wmf.width(), 96, 1);
    EXPECT_NEAR(wmf.height(), 96, 1);
    EXPECT_EQ(PictureSize(inch), wmf.size());
    EXPECT_EQ(LoadPicture(writeFile(QStringLiteral("half.wmf"), RedWmf(720, 360, 1440))).size(),
              QSize(48, 24));

    // The EMF frame of 26.45 x 13.22 mm is 100 x 50 pixels.
    const QString emfPath = writeFile(QStringLiteral("m.emf"), RedEmf());
    EXPECT_EQ(LoadPicture(emfPath).size(), QSize(100, 50));
    EXPECT_EQ(PictureSize(emfPath), QSize(100, 50));

    // A target size scales the drawing: the rectangle still fills the whole picture.
    for (const QImage& small : {LoadPicture(inch, QSize(40, 40)), LoadPicture(emfPath, {40, 40})}) {
        ASSERT_EQ(small.width(), 40);
        EXPECT_EQ(at(small, 2, 2), QColor(Qt::red));
        EXPECT_EQ(at(small, small.width() - 3, small.height() - 3), QColor(Qt::red));
    }
}

TEST_F(ImageLoadingTest, IconsAtTheirPicturesOwnSize)
{
    // Directory entries that give wrong sizes (48 for a 16-pixel picture, 256 for 32).
    QByteArray icon = IconFile(false);
    icon[6] = char(48);
    icon[7] = char(48);
    icon[22] = char(0);
    icon[23] = char(0);
    const QString path = writeFile(QStringLiteral("wrong.ico"), icon);
    const QImage image = LoadPicture(path);
    ASSERT_EQ(image.size(), QSize(32, 32));
    EXPECT_EQ(at(image, 5, 5), QColor(Qt::blue));
    EXPECT_EQ(PictureSize(path), QSize(32, 32));

    // A 4-bit icon: its mask makes the top half transparent.
    QByteArray dib;
    {
        QDataStream s(&dib, QIODevice::WriteOnly);
        s.setByteOrder(QDataStream::LittleEndian);
        s << quint32(40) << qint32(8) << qint32(16) << quint16(1) << quint16(4) << quint32(0)
          << quint32(0) << quint32(0) << quint32(0) << quint32(16) << quint32(0);
        for (int i = 0; i < 16; ++i)
            s << quint8(0) << quint8(i == 1 ? 255 : 0) << quint8(0) << quint8(0);
        for (int row = 0; row < 8; ++row)
            s << quint32(0x11111111);     // every pixel green
        for (int row = 0; row < 8; ++row) // bottom-up: the last four rows are the top
            s << quint32(row < 4 ? 0 : 0xFF);
    }
    QByteArray file;
    {
        QDataStream s(&file, QIODevice::WriteOnly);
        s.setByteOrder(QDataStream::LittleEndian);
        s << quint16(0) << quint16(1) << quint16(1) << quint8(8) << quint8(8) << quint8(16)
          << quint8(0) << quint16(1) << quint16(4) << quint32(dib.size()) << quint32(22);
    }
    const QImage masked = LoadPicture(writeFile(QStringLiteral("masked.ico"), file + dib));
    ASSERT_EQ(masked.size(), QSize(8, 8));
    EXPECT_EQ(qAlpha(masked.pixel(3, 1)), 0);
    EXPECT_EQ(masked.pixel(3, 6), qRgb(0, 255, 0));
    EXPECT_FALSE(
        PictureSize(writeFile(QStringLiteral("bad.cur"), QByteArray("\0\0\2\0", 4))).isValid());
}

TEST_F(ImageLoadingTest, SizeWithoutDecodingAgreesWithThePicture)
{
    // A JPEG whose EXIF orientation turns it a quarter: both report the turned size.
    QImage wide(40, 20, QImage::Format_RGB32);
    wide.fill(Qt::darkGreen);
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    wide.save(&buffer, "JPEG");
    const QByteArray exif = QByteArray::fromHex("ffe10022"
                                                "457869660000"
                                                "49492a0008000000"
                                                "0100"
                                                "120103000100000006000000"
                                                "00000000");
    const QString turned =
        writeFile(QStringLiteral("turned.jpg"), jpeg.left(2) + exif + jpeg.mid(2));
    EXPECT_EQ(LoadPicture(turned).size(), QSize(20, 40));
    EXPECT_EQ(PictureSize(turned), QSize(20, 40));

    // What cannot be read has no size, whatever its type.
    for (const char* name : {"x.jpg", "x.gif", "x.bmp", "x.wmf", "x.emf", "x.ico", "x.pcx"})
        EXPECT_FALSE(PictureSize(writeFile(QString::fromLatin1(name), "garbage bytes")).isValid())
            << name;
    EXPECT_FALSE(PictureSize(root() + QStringLiteral("missing.jpg")).isValid());
}

namespace {
// The most memory the process has held so far, in KiB.
long peakKiB()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}
#ifndef __SANITIZE_ADDRESS__
// The address space the process has mapped, in bytes.
rlim_t mappedBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return rlim_t(1) << 40;
    return rlim_t(statm.readAll().split(' ').value(0).toULongLong()) * rlim_t(getpagesize());
}
#endif
} // namespace

TEST_F(ImageLoadingTest, HeadersClaimingMoreThanTheirDataAreRefusedBeforeAllocating)
{
    // 204 bytes whose header claims 37 x 65,536 pixels at 65,535 bytes a line (4 GB unpacked).
    QByteArray pcx(204, '\0');
    auto* h = reinterpret_cast<uchar*>(pcx.data());
    h[0] = 0x0A;
    h[1] = 5;
    h[2] = 1;
    h[3] = 8;
    qToLittleEndian<quint16>(36, h + 8);
    qToLittleEndian<quint16>(65535, h + 10);
    h[65] = 1;
    qToLittleEndian<quint16>(65535, h + 66);
    // A true-colour TGA of 65,535 x 1,500 pixels with 186 bytes of pixel data.
    QByteArray tga(204, '\0');
    auto* t = reinterpret_cast<uchar*>(tga.data());
    t[2] = 2;
    qToLittleEndian<quint16>(65535, t + 12);
    qToLittleEndian<quint16>(1500, t + 14);
    t[16] = 24;
    QByteArray tgaRle = tga;
    tgaRle[2] = 10;

    const long before = peakKiB();
    EXPECT_TRUE(DecodePcx(pcx).isNull());
    EXPECT_TRUE(DecodeTga(tga).isNull());
    EXPECT_TRUE(DecodeTga(tgaRle).isNull());
    EXPECT_LT(peakKiB() - before, 64 * 1024);

    // A WMF whose header says its largest record takes 3.9 GB (as a 129-byte file the fuzzer
    // found did): the converter allocated that before reading a record. It is told the file's
    // size instead and draws the picture. Untouched memory does not show in the peak, so the
    // address space is capped; a sanitizer build maps terabytes of shadow memory and cannot
    // be capped, and there the fuzzer's malloc limit catches it.
    QByteArray wmf = RedWmf();
    qToLittleEndian<quint32>(0xE9F8C2ADu / 2, reinterpret_cast<uchar*>(wmf.data()) + 22 + 12);
#ifndef __SANITIZE_ADDRESS__
    rlimit old{};
    getrlimit(RLIMIT_AS, &old);
    const rlimit cap{mappedBytes() + (rlim_t(1) << 30), old.rlim_max};
    setrlimit(RLIMIT_AS, &cap);
#endif
    const QByteArray svg = WmfToSvg(wmf);
#ifndef __SANITIZE_ADDRESS__
    setrlimit(RLIMIT_AS, &old);
#endif
    EXPECT_FALSE(RenderSvg(svg).isNull());

    // Files that fill what they claim still decode.
    EXPECT_FALSE(DecodePcx(Pcx("8bit")).isNull());
    EXPECT_FALSE(DecodeTga(Tga("rle24")).isNull());
}

TEST_F(ImageLoadingTest, MetafilesTheConverterWouldMisreadAreRefused)
{
    // Found by the fuzzer: a 123-byte EMF whose header's description runs past the header;
    // the converter read it past the end of the file. It never reaches the converter now.
    const QByteArray overrun = QByteArray::fromBase64(
        "AQAAAGwAAAAAtgAAAAAAAGMAAAAxAAB1bmlFRkUzAABVCgAAKgUAACBFTUYAAAEAyAAAADQEAAD8AAAAAAAAAHsA"
        "AAAAAIBgwAcANlwEACcAAAAYAAD///7/////////////////AAEAAAAUAAAAAAAAABAAAAAUAAAA");
    EXPECT_TRUE(EmfToSvg(overrun).isEmpty());
    EXPECT_FALSE(EmfSize(overrun).isValid());

    // Records that do not fit the file, and a file cut before its end record, likewise.
    const QByteArray good = RedEmf();
    ASSERT_FALSE(EmfToSvg(good).isEmpty());
    EXPECT_TRUE(EmfToSvg(good.left(good.size() - 20)).isEmpty());
    QByteArray oversized = good;
    qToLittleEndian<quint32>(quint32(good.size()) * 4,
                             reinterpret_cast<uchar*>(oversized.data()) + 4 +
                                 qFromLittleEndian<quint32>(good.constData() + 4));
    EXPECT_TRUE(EmfToSvg(oversized).isEmpty());
}
