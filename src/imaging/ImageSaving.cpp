#include "ImageSaving.h"

#include "PictureLoader.h"
#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"

#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QSaveFile>

namespace kavori {

namespace {
bool writeImage(const QImage& image, const QString& path, const char* format, int quality = -1)
{
    if (image.isNull() || path.isEmpty())
        return false;
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QImageWriter writer(&file, format);
    if (quality >= 0)
        writer.setQuality(quality);
    if (!writer.write(image)) {
        file.cancelWriting();
        return false;
    }
    return CommitWhole(file);
}
} // namespace

QString UntitledImagePath()
{
    return TempPath() + QStringLiteral("Untitled.BMP");
}

QString UndoSnapshotPath()
{
    return TempPath() + QStringLiteral("~undo.tmp");
}

QString TempBitmapPath()
{
    return TempPath() + QStringLiteral("~temp.BMP");
}

bool SaveBitmap(const QImage& image, const QString& path)
{
    return writeImage(image, path, "bmp");
}

bool SaveAsJpeg(const QString& sourceFile, const QImage& displayed, const QString& destination,
                int qualityStep)
{
    if (qualityStep < 0 || qualityStep > 10)
        return false;
    QImage picture = LoadPicture(sourceFile);
    bool madeTemp = false;
    if (picture.isNull()) {
        madeTemp = SaveBitmap(displayed, TempBitmapPath());
        if (madeTemp)
            picture = QImageReader(TempBitmapPath(), "bmp").read();
    }
    const bool ok = writeImage(picture.convertToFormat(QImage::Format_RGB32), destination, "jpeg",
                               qualityStep * 10);
    if (madeTemp)
        QFile::remove(TempBitmapPath());
    return ok;
}

bool MakeUndoSnapshot(const QImage& current)
{
    return writeImage(current, UndoSnapshotPath(), "bmp");
}

QImage ReadUndoSnapshot()
{
    return QImageReader(UndoSnapshotPath(), "bmp").read();
}

} // namespace kavori
