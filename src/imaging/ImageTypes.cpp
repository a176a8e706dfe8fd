#include "ImageTypes.h"

#include <QFile>

namespace kavori {

namespace {

struct TypeRow {
    const char* extensions; // space separated, with their dots
    FileKind kind;
    const char* description; // "%1" stands for the extension found
};

const TypeRow kTypes[] = {
    {".BMP", FileKind::Image, "Windows Bitmap (.BMP)"},
    {".DIB", FileKind::Image, "Device Independent Bitmap (.DIB)"},
    {".RLE", FileKind::Image, "RLE4 or RLE8 Compressed Bitmap (.RLE)"},
    {".JPG .JIF .JPE .JPEG", FileKind::Image, "JPEG (.JPG, .JIF, .JPE or .JPEG)"},
    {".GIF", FileKind::Image, "Graphics Interchange Format (%1)"},
    {".WMF", FileKind::Image, "Windows Meta File (.WMF)"},
    {".EMF", FileKind::Image, "Enhanced Metafile (.EMF)"},
    {".ICO", FileKind::Image, "Windows Icon (.ICO)"},
    {".CUR", FileKind::Image, "Mouse Cursor (.CUR)"},
    {".WAV", FileKind::Sound, "Windows Wave (.WAV)"},
    {".MID .RMI", FileKind::Sound, "MIDI Sequence (.MID or .RMI)"},
    {".AU .SND .AIF .AIFF .AIFC", FileKind::Sound, "Wave Sound (.AU, .SND, .AIF, .AIFF, .AIFC)"},
    {".MP3", FileKind::Sound, "MPEG Layer 3 Audio (.MP3)"},
    {".AVI", FileKind::Movie, "Video for Windows (.AVI)"},
    {".MOV .QT", FileKind::Movie, "Apple Quicktime (.MOV or .QT)"},
    {".MPEG .MPE .MPG .MPA .ENC .M1V .MP2", FileKind::Movie, "Active Movie (%1)"},
};

// The extension of path that appears in the table, upper-cased, or empty.
QString knownExtension(const QString& path, const TypeRow& row)
{
    const QStringList extensions = QString::fromLatin1(row.extensions).split(u' ');
    const QString upper = path.toUpper();
    for (const QString& ext : extensions) {
        if (upper.endsWith(ext))
            return ext;
    }
    return {};
}

QString gifSignature(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLatin1(file.read(6));
}

} // namespace

bool IsImageFile(const QString& path)
{
    static const char* const four[] = {".BMP", ".DIB", ".JPG", ".JIF", ".JPE", ".GIF",
                                       ".WMF", ".EMF", ".ICO", ".RLE", ".CUR"};
    const QString last4 = path.right(4).toUpper();
    for (const char* ext : four) {
        if (last4 == QLatin1String(ext))
            return true;
    }
    return path.right(5).toUpper() == QLatin1String(".JPEG");
}

bool IsAnimatedGif(const QString& path)
{
    if (path.right(4).toUpper() != QLatin1String(".GIF"))
        return false;
    return gifSignature(path).toUpper() == QLatin1String("GIF89A");
}

bool IsImportFile(const QString& path)
{
    const QString last4 = path.right(4).toUpper();
    return last4 == QLatin1String(".PCX") || last4 == QLatin1String(".TGA");
}

FileTypeInfo DescribeFileType(const QString& path)
{
    for (const TypeRow& row : kTypes) {
        const QString ext = knownExtension(path, row);
        if (ext.isEmpty())
            continue;
        QString text = QString::fromLatin1(row.description);
        if (ext == QLatin1String(".GIF"))
            text = text.arg(gifSignature(path));
        else if (text.contains(QLatin1String("%1")))
            text = text.arg(ext);
        return {row.kind, text};
    }
    return {};
}

bool IsSoundFile(const QString& path)
{
    return DescribeFileType(path).kind == FileKind::Sound;
}

bool IsMovieFile(const QString& path)
{
    return DescribeFileType(path).kind == FileKind::Movie;
}

} // namespace kavori
