#pragma once

#include "fileutil/FileJobs.h"

#include <QDialog>

class QMenu;

#include <functional>

namespace kavori {

class FolderPane;

// Copies the chosen files of a source folder to a destination folder (also as "Copy
// Sound(s)"); frmMoveImages moves them. The user's quick folders are a click away as
// destinations.
class frmCopyImages : public QDialog {
    Q_OBJECT
public:
    explicit frmCopyImages(const QString& currentFile, QWidget* parent = nullptr,
                           bool sounds = false);

    FolderPane* source() const { return m_source; }
    FolderPane* destination() const { return m_destination; }
    // The copy (or move) of the selected files, as the button does it.
    void run();

protected:
    frmCopyImages(FileJobKind kind, const QString& currentFile, bool sounds, QWidget* parent);

private:
    void build(bool sounds);

    FileJobKind m_kind;
    QString m_currentFile;
    FolderPane* m_source = nullptr;
    FolderPane* m_destination = nullptr;
};

class frmMoveImages : public frmCopyImages {
    Q_OBJECT
public:
    explicit frmMoveImages(const QString& currentFile, QWidget* parent = nullptr,
                           bool sounds = false);
};

// The quick folders as a menu of destinations: "F1  name" for each one set. Choosing one calls
// chosen with its folder.
QMenu* QuickFolderMenu(QWidget* parent, const std::function<void(const QString&)>& chosen);

// Where the file dialogs start: the current picture's folder, else the favourite folder.
QString StartFolder(const QString& currentFile);

} // namespace kavori
