#pragma once

#include <QString>

namespace kavori {

// File types are told by extension, compared without case (".JPEG" on its last 5 characters,
// the others on their last 4).

// One of the twelve types the picture loader opens.
bool IsImageFile(const QString& path);
// A GIF whose first six bytes read "GIF89A" without regard to case. A file that cannot be
// opened is not animated.
bool IsAnimatedGif(const QString& path);
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
