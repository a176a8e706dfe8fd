#pragma once

#include "FolderTree.h"

#include <QStringList>
#include <QWidget>

class QLineEdit;
class QListWidget;

namespace kavori {

// A folder tree with the folder's path above it and, when asked for, the list of its files
// of the given patterns. The file list is read at once, so what the dialog acts on is what the
// user sees; the tree reads its folders in the background.
class FolderPane : public QWidget {
    Q_OBJECT
public:
    // treeName and listName are the object names of the tree and the list; an empty listName
    // gives a pane of folders only.
    FolderPane(const QString& treeName, const QString& listName, const QStringList& patterns,
               QWidget* parent = nullptr);

    void setFolder(const QString& folder);
    QString folder() const; // ends in "/"
    void refresh();

    QStringList files() const;         // the listed files, full paths
    QStringList selectedFiles() const; // in list order
    void selectAll();
    // Chooses these files (full paths) of the folder shown, and no others.
    void selectFiles(const QStringList& paths);
    QListWidget* fileList() const { return m_list; }
    QTreeView* tree() const { return m_tree; }

Q_SIGNALS:
    void folderChanged(const QString& folder);
    // The Delete key in the file list, or in the tree.
    void deleteFileKey();
    void deleteFolderKey();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FolderTree* m_tree = nullptr;
    QLineEdit* m_path = nullptr;
    QListWidget* m_list = nullptr;
    QStringList m_patterns;
    QString m_folder;
};

// The file patterns of the file dialogs: pictures and movies, or sounds.
QStringList ImagePatterns();
QStringList SoundPatterns();

} // namespace kavori
