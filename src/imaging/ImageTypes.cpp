#include "ImageTypes.h"

#include "settings/Settings.h"

#include <QFile>
#include <QImageReader>

#include <algorithm>

namespace kavori {

namespace {

struct TypeRow {
    const char* extensions; // space separated, with their dots
    FileKind kind;
    const char* description;      // "%1" stands for the extension found
    bool modern = false;          // one of today's picture types, off with ClassicTypesOnly
    const char* filter = nullptr; // the open dialog's entry for a modern type
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
    {".PNG", FileKind::Image, "Portable Network Graphics (.PNG)", true, "PNG"},
    {".TIF .TIFF", FileKind::Image, "Tagged Image File Format (.TIF or .TIFF)", true, "TIFF"},
    {".WEBP", FileKind::Image, "WebP Image (.WEBP)", true, "WebP"},
    {".AVIF", FileKind::Image, "AV1 Image File Format (.AVIF)", true, "AVIF"},
    {".HEIC .HEIF", FileKind::Image, "High Efficiency Image File Format (.HEIC or .HEIF)", true,
     "HEIF"},
    {".JXL", FileKind::Image, "JPEG XL (.JXL)", true, "JPEG XL"},
    {".WAV", FileKind::Sound, "Windows Wave (.WAV)"},
    {".MID .RMI", FileKind::Sound, "MIDI Sequence (.MID or .RMI)"},
    {".AU .SND .AIF .AIFF .AIFC", FileKind::Sound, "Wave Sound (.AU, .SND, .AIF, .AIFF, .AIFC)"},
    {".MP3", FileKind::Sound, "MPEG Layer 3 Audio (.MP3)"},
    {".AVI", FileKind::Movie, "Video for Windows (.AVI)"},
    {".MOV .QT", FileKind::Movie, "Apple Quicktime (.MOV or .QT)"},
    {".MPEG .MPE .MPG .MPA .ENC .M1V .MP2", FileKind::Movie, "Active Movie (%1)"},
};

// The classic twelve, in the order the open dialog has always listed them.
const char* const kClassicFilter =
    "*.bmp *.dib *.rle *.jpg *.jif *.jpe *.jpeg *.gif *.wmf *.emf *.ico *.cur";
const char* const kClassicFamilies =
    ";;Windows Bitmap (*.bmp *.dib *.rle);;JPEG (*.jpg *.jif *.jpe *.jpeg);;Graphics "
    "Interchange Format (*.gif);;Metafiles (*.wmf *.emf);;Icons and Cursors (*.ico *.cur)";

bool modernTypesOn()
{
    return !CurrentSettings().ClassicTypesOnly;
}

QStringList rowExtensions(const TypeRow& row)
{
    return QString::fromLatin1(row.extensions).split(u' ');
}

// The extension of path that appears in the table, upper-cased, or empty.
QString knownExtension(const QString& path, const TypeRow& row)
{
    const QString upper = path.toUpper();
    for (const QString& ext : rowExtensions(row)) {
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

QString patterns(const TypeRow& row)
{
    QStringList list;
    for (const QString& ext : rowExtensions(row))
        list << u'*' + ext.toLower();
    return list.join(u' ');
}

bool isClassicImageFile(const QString& path)
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

} // namespace

bool IsImageFile(const QString& path)
{
    return isClassicImageFile(path) || (modernTypesOn() && IsModernImageFile(path));
}

bool IsModernImageFile(const QString& path)
{
    // Asked for every file of a folder while browsing: the extensions are split once.
    static const QStringList extensions = [] {
        QStringList all;
        for (const TypeRow& row : kTypes) {
            if (row.modern)
                all << rowExtensions(row);
        }
        return all;
    }();
    return std::any_of(extensions.cbegin(), extensions.cend(),
                       [&](const QString& ext) { return path.endsWith(ext, Qt::CaseInsensitive); });
}

QStringList ImageExtensions()
{
    QStringList extensions;
    for (const TypeRow& row : kTypes) {
        if (row.kind == FileKind::Image && (!row.modern || modernTypesOn()))
            extensions << rowExtensions(row);
    }
    return extensions;
}

QString ImageOpenFilter()
{
    QString all = QString::fromLatin1(kClassicFilter);
    QString families;
    if (modernTypesOn()) {
        for (const TypeRow& row : kTypes) {
            if (!row.modern)
                continue;
            all += u' ' + patterns(row);
            families += QStringLiteral(";;") + QString::fromLatin1(row.filter) +
                        QStringLiteral(" (") + patterns(row) + u')';
        }
    }
    return QStringLiteral("All Supported Images (") + all + u')' +
           QString::fromLatin1(kClassicFamilies) + families;
}

bool IsAnimatedGif(const QString& path)
{
    if (path.right(4).toUpper() != QLatin1String(".GIF"))
        return false;
    return gifSignature(path).toUpper() == QLatin1String("GIF89A");
}

bool IsAnimatedPicture(const QString& path)
{
    if (IsAnimatedGif(path))
        return true;
    if (!modernTypesOn() || !path.toUpper().endsWith(QLatin1String(".WEBP")))
        return false;
    QImageReader reader(path, "webp");
    return reader.supportsAnimation() && reader.imageCount() > 1;
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
        if (ext.isEmpty() || (row.modern && !modernTypesOn()))
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
