#pragma once

#include <QTreeView>

class QFileSystemModel;
class QStandardItem;
class QStandardItemModel;

namespace kavori {

struct BrowserNode;

// The machine's folders as a tree. The model reads folders on its own thread, so the tree opens
// down to the folder it is asked to show as each level arrives. A click says which folder the
// user chose.
//
// Made with Places, the tree shows named places instead (the file browser's special nodes and
// drives, each added with addNodes): a node that leads to a folder lists that folder's
// sub-folders the first time it is opened, on a worker thread, so a slow or missing drive never
// holds up the window.
class FolderTree : public QTreeView {
    Q_OBJECT
public:
    enum class Kind { Machine, Places };
    explicit FolderTree(const QString& objectName, QWidget* parent = nullptr,
                        Kind kind = Kind::Machine);

    // Opens the tree down to folder and makes it the current one (the machine's tree).
    void showFolder(const QString& folder);

    // Places: adds nodes below the nodes their parent keys name (the top level for none).
    void addNodes(const QVector<BrowserNode>& nodes);
    // Places: the node of a key, for tests and for opening it.
    QModelIndex nodeIndex(const QString& key) const;
    // Places: the folders listed so far below a node (none before it was opened).
    QStringList childFolders(const QModelIndex& index) const;
    // Places: how many sub-folder listings are still being read.
    int pendingListings() const { return m_pending; }

Q_SIGNALS:
    void folderClicked(const QString& folder);

private:
    void openToWanted();
    void listChildren(QStandardItem* item);
    void nodeClicked(const QModelIndex& index);

    QFileSystemModel* m_model = nullptr;
    QStandardItemModel* m_places = nullptr;
    QString m_wanted;
    int m_pending = 0;
};

// The icon of a node's icon key (a drive kind, a special place, or a plain folder).
QIcon NodeIcon(const QString& iconKey);

} // namespace kavori
