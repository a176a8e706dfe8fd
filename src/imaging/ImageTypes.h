#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// File types are told by extension, compared without case (".JPEG" on its last 5 characters,
// the others of the classic twelve on their last 4).

// A picture the picture loader opens: one of the twelve classic types, or one of today's
// (PNG, TIFF, WebP, AVIF, HEIF/HEIC, JPEG XL) unless ClassicTypesOnly is set.
bool IsImageFile(const QString& path);
// One of today's types, whether or not they are open to the user now.
bool IsModernImageFile(const QString& path);
// The extensions IsImageFile accepts now, upper-cased with their dot, the classic ones first.
QStringList ImageExtensions();
// The open dialog's filter in Qt's form: every type opened now, then one entry per family.
QString ImageOpenFilter();
// A GIF whose first six bytes read "GIF89A" without regard to case. A file that cannot be
// opened is not animated.
bool IsAnimatedGif(const QString& path);
// A picture shown as an animation: an animated GIF, or a WebP of more than one frame.
bool IsAnimatedPicture(const QString& path);
// PCX and TGA pictures are imported rather than opened.
bool IsImportFile(const QString& path);

enum class FileKind { Unknown, Image, Sound, Movie };

// The type line the information display shows, and which kind of file it is. An unknown
// extension gives an empty description.
struct FileTypeInfo {
    FileKind kind = FileKind::Unknown;
    QString description;
};
FileTypeInfo DescribeFileType(const QString& path);

bool IsSoundFile(const QString& path);
bool IsMovieFile(const QString& path);

} // namespace kavori
