#pragma once

#include "ImageEdits.h"

#include <QImage>
#include <QString>

#include <functional>

namespace kavori {

// The image the main window shows: its picture, the file it came from, whether it was changed,
// and the one level of undo. The window asks and shows; this class decides.
class ImageDocument {
public:
    // The name of an image that exists only in memory (new, pasted, imported).
    static QString UntitledName();

    bool hasImage() const { return !m_image.isNull(); }
    const QImage& image() const { return m_image; }
    const QString& currentFile() const { return m_currentFile; } // CurrentFile
    bool imageChanged() const { return m_imageChanged; }         // ImageChanged

    // "Kavori - [name]", or "Kavori" with nothing open.
    QString title() const;

    // Takes a picture read from a file (or from memory when path is UntitledName()). shownName
    // is the name the title shows when it is not the file's own (an imported picture).
    void setImage(const QImage& image, const QString& path, bool changed = false,
                  const QString& shownName = QString());
    void markSaved(const QString& path);
    // The file was moved or renamed: the picture and its changes stay.
    void fileMoved(const QString& path) { m_currentFile = path; }
    // Nothing open any more (the file was deleted).
    void clear();
    // Takes a picture without a file of its own (new, pasted, captured, imported): it is named
    // UntitledName() and kept in the scratch file of that name. With an undo caption the picture
    // it replaces becomes the undo snapshot, as an edit's would.
    void setUntitled(const QImage& image, const QString& undoCaption = QString(),
                     const QString& shownName = QString());

    // Runs an editing command: the picture before it becomes the undo snapshot. Returns the
    // command's refusal message (nothing changes then), or an empty string.
    QString edit(const QString& undoCaption,
                 const std::function<EditResult(const QImage&)>& command);

    bool canUndo() const { return m_canUndo; }
    // "Can't Undo" when there is nothing to undo, else the caption of the last edit.
    QString undoCaption() const;
    // Puts the snapshot back. False when there is none or it cannot be read.
    bool undo();

    // The undo snapshot file, "~undo.tmp" in the temporary folder.
    static QString UndoSnapshotPath();

private:
    void takeUndoSnapshot(const QString& undoCaption);

    QImage m_image;
    QString m_currentFile;
    QString m_shownName;
    bool m_imageChanged = false;
    bool m_canUndo = false;
    QString m_undoCaption;
    QString m_undoFile;
    QString m_undoShownName;
    bool m_undoChanged = false;
};

// The unsaved-image question; true when the command may go on.
bool ConfirmDiscardChanges(const ImageDocument& document);

} // namespace kavori
