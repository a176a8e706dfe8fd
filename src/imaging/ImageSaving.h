#pragma once

#include <QImage>
#include <QString>

namespace kavori {

// Writes a picture as a Windows bitmap. The old file stays whole when writing fails.
bool SaveBitmap(const QImage& image, const QString& path);

// Writes a JPEG at quality step x 10 (steps 0 to 10; a larger step writes nothing). The
// picture is read again from sourceFile when it can be; otherwise the displayed picture goes
// through the scratch bitmap "~temp.BMP", which is deleted afterwards.
bool SaveAsJpeg(const QString& sourceFile, const QImage& displayed, const QString& destination,
                int qualityStep);

// The scratch files in the temporary folder.
QString UntitledImagePath(); // "Untitled.BMP"
QString UndoSnapshotPath();  // "~undo.tmp"
QString TempBitmapPath();    // "~temp.BMP"

// Keeps the picture as it is before an edit, replacing the previous snapshot (one level).
bool MakeUndoSnapshot(const QImage& current);
QImage ReadUndoSnapshot();

} // namespace kavori
