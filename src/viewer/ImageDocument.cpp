#include "ImageDocument.h"

#include "imaging/ImageSaving.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"

#include <QFile>

namespace kavori {

QString ImageDocument::UntitledName()
{
    return QStringLiteral("Untitled.BMP");
}

QString ImageDocument::UndoSnapshotPath()
{
    return kavori::UndoSnapshotPath();
}

QString ImageDocument::title() const
{
    if (m_currentFile.isEmpty())
        return AppTitle();
    const QString name = m_shownName.isEmpty() ? FileNameOf(m_currentFile) : m_shownName;
    return AppTitle() + QStringLiteral(" - [") + name + u']';
}

void ImageDocument::setImage(const QImage& image, const QString& path, bool changed,
                             const QString& shownName)
{
    m_image = image;
    m_currentFile = path;
    m_shownName = shownName;
    m_imageChanged = changed;
}

void ImageDocument::markSaved(const QString& path)
{
    m_currentFile = path;
    m_shownName.clear();
    m_imageChanged = false;
}

void ImageDocument::clear()
{
    m_image = QImage();
    m_currentFile.clear();
    m_shownName.clear();
    m_imageChanged = false;
}

void ImageDocument::setUntitled(const QImage& image, const QString& undoCaption,
                                const QString& shownName)
{
    if (!undoCaption.isEmpty() && !m_image.isNull())
        takeUndoSnapshot(undoCaption);
    m_image = image.convertToFormat(QImage::Format_RGB32);
    m_currentFile = UntitledName();
    m_shownName = shownName;
    m_imageChanged = true;
    // "Open Temporary Image" brings back the latest picture that had no file.
    SaveBitmap(m_image, UntitledImagePath());
}

// The snapshot is the picture as it stood, so an edit of an edit undoes one step.
void ImageDocument::takeUndoSnapshot(const QString& undoCaption)
{
    m_canUndo = MakeUndoSnapshot(m_image);
    m_undoCaption = undoCaption;
    m_undoFile = m_currentFile;
    m_undoShownName = m_shownName;
    m_undoChanged = m_imageChanged;
}

QString ImageDocument::edit(const QString& undoCaption,
                            const std::function<EditResult(const QImage&)>& command)
{
    if (m_image.isNull())
        return {};
    const EditResult result = command(m_image);
    if (result.image.isNull())
        return result.message;
    takeUndoSnapshot(undoCaption);
    m_image = result.image;
    m_imageChanged = true;
    return {};
}

QString ImageDocument::undoCaption() const
{
    return m_canUndo ? m_undoCaption : QStringLiteral("Can't Undo");
}

bool ImageDocument::undo()
{
    if (!m_canUndo)
        return false;
    const QImage before = ReadUndoSnapshot();
    if (before.isNull())
        return false;
    m_image = before;
    m_currentFile = m_undoFile;
    m_shownName = m_undoShownName;
    m_imageChanged = m_undoChanged;
    m_canUndo = false;
    QFile::remove(UndoSnapshotPath());
    return true;
}

bool ConfirmDiscardChanges(const ImageDocument& document)
{
    if (!document.imageChanged())
        return true;
    return MsgBox(QStringLiteral("The current file has not been saved.") + NewLine2() +
                      QStringLiteral("Discard changes and continue?"),
                  vbYesNo + vbQuestion) == vbYes;
}

} // namespace kavori
