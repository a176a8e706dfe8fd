#pragma once

#include <QTreeView>

class QFileSystemModel;

namespace kavori {

// The machine's folders as a tree. The model reads folders on its own thread, so the tree opens
// down to the folder it is asked to show as each level arrives. A click says which folder the
// user chose.
class FolderTree : public QTreeView {
    Q_OBJECT
public:
    explicit FolderTree(const QString& objectName, QWidget* parent = nullptr);

    // Opens the tree down to folder and makes it the current one.
    void showFolder(const QString& folder);

Q_SIGNALS:
    void folderClicked(const QString& folder);

private:
    void openToWanted();

    QFileSystemModel* m_model = nullptr;
    QString m_wanted;
};

} // namespace kavori
