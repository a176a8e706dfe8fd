// Writes a starting corpus for every fuzz target: kavori-fuzz-seeds DIR makes DIR/<target>/
// with small valid files of each kind the reader meets, so the fuzzers start from the formats'
// real structure instead of random bytes.
#include "imaging/ImageFiles.h"
#include "imaging/JpegFiles.h"
#include "imaging/ModernFiles.h"
#include "support/PhotoLike.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImageWriter>
#include <QtEndian>

#include <cstdio>

namespace {

QString g_root;

void Put(const char* target, const QString& name, const QByteArray& bytes)
{
    const QString folder = g_root + QLatin1Char('/') + QLatin1String(target);
    QDir().mkpath(folder);
    QFile file(folder + QLatin1Char('/') + name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file.fileName()));
}

QByteArray Lines(const QStringList& lines)
{
    return (lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1();
}

QByteArray Written(const QImage& picture, const char* format, bool progressive = false)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(progressive);
    writer.write(picture);
    return bytes;
}

// A bottom-up run-length bitmap of width x height with a four-colour palette.
QByteArray RleBmp(int width, int height, bool four, const QByteArray& pixels)
{
    QByteArray info(40, '\0');
    qToLittleEndian<quint32>(40, info.data());
    qToLittleEndian<qint32>(width, info.data() + 4);
    qToLittleEndian<qint32>(height, info.data() + 8);
    qToLittleEndian<quint16>(1, info.data() + 12);
    qToLittleEndian<quint16>(four ? 4 : 8, info.data() + 14);
    qToLittleEndian<quint32>(four ? 2 : 1, info.data() + 16);
    qToLittleEndian<quint32>(quint32(pixels.size()), info.data() + 20);
    qToLittleEndian<quint32>(4, info.data() + 32);
    const QByteArray palette = QByteArray::fromHex("0000ff0000ff0000ff000000ffffff00");
    QByteArray head(14, '\0');
    head[0] = 'B';
    head[1] = 'M';
    const int offset = 14 + info.size() + palette.size();
    qToLittleEndian<quint32>(quint32(offset + pixels.size()), head.data() + 2);
    qToLittleEndian<quint32>(quint32(offset), head.data() + 10);
    return head + info + palette + pixels;
}

void CopyTree(const char* target, const QString& folder, const QStringList& patterns)
{
    QDirIterator it(folder, patterns, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.size() < 256 * 1024 && file.open(QIODevice::ReadOnly))
            Put(target, it.fileName(), file.readAll());
    }
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: kavori-fuzz-seeds SOURCE-ROOT DIR\n");
        return 2;
    }
    const QString source = QString::fromLocal8Bit(argv[1]);
    g_root = QString::fromLocal8Bit(argv[2]);
    using namespace kavori::test;

    Put("ini", QStringLiteral("kavori.ini"),
        Lines({"[Options]", "SlideInterval=5", "BackgroundColor=&H000000", "", "; a note",
               "[Recent]", "File1=/home/user/a.jpg", "[boot]", "SCRNSAVE.EXE=kavori.scr"}));
    Put("ini", QStringLiteral("odd.ini"),
        QByteArrayLiteral("[A\nkey\n=value\n[]\nx=\"q\"\r\n\r[B]y=2"));

    const QByteArray show3 =
        Lines({"\"Kavori Slide Show\"", "\"Version 3.0\"", "2", "\"\"", "0", "-1", "7", "0", "-1",
               "-1", "\"/p/a.jpg\",5,1,0,3,\"\",0,0", "\"/p/b.bmp\",6,0,1,-1,\"Chime.wav\",0,0"});
    Put("show", QStringLiteral("v3.kav"), show3);
    Put("show", QStringLiteral("v1.kav"),
        Lines({"Kavori Slide Show", "Version 1.X", "1", "", "0", "0", "6", "-1", "0", "/p/a.bmp",
               "/p/b.bmp"}));
    Put("show", QStringLiteral("v15.kav"),
        Lines({"Kavori Slide Show", "Version 1.5", "0", "", "0", "0", "5", "0", "0", "/p/a.bmp"}));
    Put("show", QStringLiteral("v2.kav"),
        Lines({"Kavori Slide Show",
               "Version 2.0",
               "0",
               "\"\"",
               "0",
               "0",
               "5",
               "0",
               "0",
               "0",
               "-1",
               "-1",
               "0",
               "\"\"",
               "0",
               "0",
               "0",
               "0",
               "\"6\"",
               "\"0\"",
               "\"10\"",
               "-1",
               "\"\""}));
    CopyTree("show", source + QStringLiteral("/resources/home/Slides"), {QStringLiteral("*.KAV")});
    CopyTree("list_input", source + QStringLiteral("/resources/home"),
             {QStringLiteral("*.KAV"), QStringLiteral("*.DAT")});
    Put("list_input", QStringLiteral("fields.txt"),
        QByteArrayLiteral("\"a\",b,  c\r\n\"quoted, comma\" tail,x\n\r\n\"open quote\r\nlast"));

    Put("description", QStringLiteral("descript.ion"),
        Lines({"\"a.jpg\",\"A harbour at dusk\",\"Arial,12,0,0,16777215,0,1,2\"",
               "\"b.bmp\",\"Two\r\nlines\",\"\"",
               "\"c.pcx\",\"\",\"Times New Roman,24,-1,-1,255,1,0,0\""}));
    CopyTree("program_files", source + QStringLiteral("/resources/home"),
             {QStringLiteral("*.DAT")});
    Put("program_files", QStringLiteral("languages.dat"),
        Lines({"\"English\",\"en\"", "\"Deutsch\",\"de\"", "2"}));

    const QImage photo = PhotoLike(96, 64, 7);
    Put("jpeg", QStringLiteral("qt.jpg"), Written(photo, "jpeg"));
    Put("jpeg", QStringLiteral("progressive.jpg"), Written(photo, "jpeg", true));
    JpegLayout layout;
    Put("jpeg", QStringLiteral("420.jpg"), EncodeJpeg(photo, layout));
    layout.lumaH = 1;
    layout.lumaV = 1;
    layout.restartMcus = 3;
    layout.orientation = 6;
    Put("jpeg", QStringLiteral("444-restart-exif.jpg"), EncodeJpeg(photo, layout));
    layout = {};
    layout.lumaV = 1;
    Put("jpeg", QStringLiteral("422.jpg"), EncodeJpeg(photo, layout));
    layout = {};
    layout.grey = true;
    Put("jpeg", QStringLiteral("grey.jpg"), EncodeJpeg(photo, layout));
    layout = {};
    layout.cmyk = true;
    Put("jpeg", QStringLiteral("cmyk.jpg"), EncodeJpeg(photo, layout));

    for (const char* kind : {"8bit", "24bit", "planar16", "cga", "packed16", "mono"})
        Put("pcx", QString::fromLatin1(kind) + QStringLiteral(".pcx"), Pcx(kind));
    for (const char* kind : {"mapped", "rle24", "grey", "top16", "rle32"})
        Put("tga", QString::fromLatin1(kind) + QStringLiteral(".tga"), Tga(kind));

    Put("bmp", QStringLiteral("rgb24.bmp"), Written(PhotoLike(13, 7, 3), "bmp"));
    Put("bmp", QStringLiteral("indexed8.bmp"),
        Written(PhotoLike(13, 7, 3).convertToFormat(QImage::Format_Indexed8), "bmp"));
    Put("bmp", QStringLiteral("mono.bmp"),
        Written(PhotoLike(13, 7, 3).convertToFormat(QImage::Format_Mono), "bmp"));
    Put("bmp", QStringLiteral("rle8.bmp"),
        RleBmp(6, 4, false,
               QByteArray::fromHex("03010003020300000000020200020201020300000004000102030001")));
    Put("bmp", QStringLiteral("rle4.bmp"),
        RleBmp(6, 4, true, QByteArray::fromHex("05120130000501230100000002010203000000010001")));
    Put("bmp", QStringLiteral("icon.ico"), IconFile(false));
    Put("bmp", QStringLiteral("cursor.cur"), IconFile(true));

    Put("metafile", QStringLiteral("red.wmf"), RedWmf());
    Put("metafile", QStringLiteral("inch.wmf"), RedWmf(1440, 1440, 1440));
    Put("metafile", QStringLiteral("red.emf"), RedEmf());

    Put("mci", QStringLiteral("movie.txt"),
        QByteArrayLiteral(
            "open \"/p/movie.mpg\" type MPEGVideo alias Movie\nset Movie time format frames\n"
            "window Movie handle 12\nput Movie destination\nwhere Movie source\n"
            "play Movie from 0 to 100\nstatus Movie mode\npause Movie\nclose Movie"));
    Put("mci", QStringLiteral("cd.txt"),
        QByteArrayLiteral("open cdaudio alias cd\nset cd time format tmsf\nplay cd from 2 to 3\n"
                          "status cd current track\nstop cd\nrealize cd normal\nclose all"));
    Put("mci", QStringLiteral("midi.txt"),
        QByteArrayLiteral(
            "open \"a b.mid\" type sequencer alias Music\nplay Music\nstatus Music mode\nclose Music"));
    // Today's types: the first byte tells the fuzz target which type the rest is.
    const QImage small = PhotoLike(48, 32, 5);
    ModernOptions turned;
    turned.orientation = 6;
    QString why;
    const QList<QPair<char, QByteArray>> modern = {{0, EncodeAvif(small, turned, &why)},
                                                   {1, EncodeHeif(small, turned, &why)},
                                                   {2, EncodeJxl(small, {}, &why)},
                                                   {3, EncodePng(small, turned)},
                                                   {4, EncodeTiff(small, turned)},
                                                   {5, EncodeWebp(small, turned)},
                                                   {5, AnimatedWebp(small, PhotoLike(48, 32, 6))}};
    int n = 0;
    for (const auto& [type, bytes] : modern) {
        if (!bytes.isEmpty())
            Put("modern", QStringLiteral("seed%1").arg(n++), QByteArray(1, type) + bytes);
    }
    return 0;
}
