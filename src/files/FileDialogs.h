#pragma once

#include <QDialog>

class QLabel;

namespace kavori {

class FolderPane;

// Moves the picture open in the main window to another folder.
class frmMoveCurrentImg : public QDialog {
    Q_OBJECT
public:
    explicit frmMoveCurrentImg(const QString& currentFile, QWidget* parent = nullptr);
    FolderPane* destination() const { return m_destination; }
    void run();
    // Where the picture went; empty while it has not moved.
    QString movedTo() const { return m_movedTo; }
    // What a click on the current file's label shows.
    void showFullPath();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* m_current = nullptr;
    QString m_currentFile;
    QString m_movedTo;
    FolderPane* m_destination = nullptr;
};

// Deletes the chosen files of a folder (or the folder when it is empty).
class DeleteImgFrm : public QDialog {
    Q_OBJECT
public:
    explicit DeleteImgFrm(const QString& currentFile, QWidget* parent = nullptr);
    FolderPane* source() const { return m_source; }
    void run();

private:
    QString m_currentFile;
    FolderPane* m_source = nullptr;
};

// Renames one file of a folder at a time, offering another after each.
class RenameImgFrm : public QDialog {
    Q_OBJECT
public:
    explicit RenameImgFrm(const QString& currentFile, QWidget* parent = nullptr);
    FolderPane* source() const { return m_source; }
    void run();

private:
    QString m_currentFile;
    FolderPane* m_source = nullptr;
};

// Deletes an empty folder chosen in a folder tree.
class DeleteFolderFrm : public QDialog {
    Q_OBJECT
public:
    explicit DeleteFolderFrm(const QString& startFolder, QWidget* parent = nullptr);
    FolderPane* folders() const { return m_folders; }
    void run();

private:
    FolderPane* m_folders = nullptr;
};

// The Delete key of any file list and folder tree of these dialogs.
void ConnectDeleteKeys(FolderPane* pane, const QString& currentFile);

} // namespace kavori
