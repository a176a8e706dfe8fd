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

QString ImageDocument::edit(const QString& undoCaption,
                            const std::function<EditResult(const QImage&)>& command)
{
    if (m_image.isNull())
        return {};
    const EditResult result = command(m_image);
    if (result.image.isNull())
        return result.message;
    // The snapshot is the picture as it stood, so an edit of an edit undoes one step.
    m_canUndo = MakeUndoSnapshot(m_image);
    m_undoCaption = undoCaption;
    m_undoFile = m_currentFile;
    m_undoChanged = m_imageChanged;
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
