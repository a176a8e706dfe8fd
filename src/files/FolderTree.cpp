#include "FolderTree.h"

#include "browse/BrowserNodes.h"
#include "platform/AppPaths.h"
#include "platform/FolderEntries.h"
#include "viewer/AppIcon.h"

#include <QApplication>
#include <QCollator>
#include <QDir>
#include <QFile>
#include <QFileSystemModel>
#include <QFutureWatcher>
#include <QPointer>
#include <QStandardItemModel>
#include <QStyle>
#include <QtConcurrent>

namespace kavori {

namespace {

enum Role { KeyRole = Qt::UserRole + 1, FolderRole, ListedRole, PlaceholderRole };

QStandardItem* placeholder()
{
    auto* item = new QStandardItem(QStringLiteral("..."));
    item->setData(true, PlaceholderRole);
    item->setEnabled(false);
    return item;
}

QStandardItem* folderItem(const QString& caption, const QString& key, const QString& folder,
                          const QString& iconKey, bool openable)
{
    auto* item = new QStandardItem(NodeIcon(iconKey), caption);
    item->setEditable(false);
    item->setData(key, KeyRole);
    item->setData(folder, FolderRole);
    // Nodes that lead somewhere show they can be opened before anything is read.
    if (openable)
        item->appendRow(placeholder());
    return item;
}

QStringList subFolders(const QString& folder)
{
    QStringList names;
    ForEachEntry(folder, [&](const QByteArray& name, EntryKind kind) {
        if (kind == EntryKind::Folder)
            names << QFile::decodeName(name);
    });
    QCollator collator(
        QLocale(QLocale::English, QLocale::UnitedStates)); // numeric mode needs a real locale
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(names.begin(), names.end(),
              [&](const QString& a, const QString& b) { return collator.compare(a, b) < 0; });
    return names;
}

} // namespace

QIcon NodeIcon(const QString& iconKey)
{
    struct Entry {
        const char* key;
        const char* theme;
        QStyle::StandardPixmap fallback;
    };
    static const Entry table[] = {
        {"mycomputer", "computer", QStyle::SP_ComputerIcon},
        {"desktop", "user-desktop", QStyle::SP_DesktopIcon},
        {"mydocuments", "folder-documents", QStyle::SP_DirHomeIcon},
        {"favfolder", "folder-favorites", QStyle::SP_DirIcon},
        {"slides", "folder-pictures", QStyle::SP_DirIcon},
        {"bonus", "folder-image", QStyle::SP_DirIcon},
        {"quick", "folder-open", QStyle::SP_DirOpenIcon},
        {"quickfolder", "folder", QStyle::SP_DirIcon},
        {"hd", "drive-harddisk", QStyle::SP_DriveHDIcon},
        {"net", "folder-remote", QStyle::SP_DriveNetIcon},
        {"cdrom", "media-optical", QStyle::SP_DriveCDIcon},
        {"remove", "drive-removable-media", QStyle::SP_DriveFDIcon},
        {"floppya", "media-floppy", QStyle::SP_DriveFDIcon},
        {"floppyb", "media-floppy", QStyle::SP_DriveFDIcon},
    };
    if (iconKey == QLatin1String("kavori"))
        return KavoriIcon();
    for (const Entry& e : table) {
        if (iconKey == QLatin1String(e.key)) {
            const QIcon themed = QIcon::fromTheme(QString::fromLatin1(e.theme));
            return themed.isNull() ? QApplication::style()->standardIcon(e.fallback) : themed;
        }
    }
    const QIcon folder = QIcon::fromTheme(QStringLiteral("folder"));
    return folder.isNull() ? QApplication::style()->standardIcon(QStyle::SP_DirIcon) : folder;
}

FolderTree::FolderTree(const QString& objectName, QWidget* parent, Kind kind) : QTreeView(parent)
{
    setObjectName(objectName);
    setHeaderHidden(true);
    if (kind == Kind::Places) {
        m_places = new QStandardItemModel(this);
        setModel(m_places);
        connect(this, &QTreeView::expanded, this,
                [this](const QModelIndex& index) { listChildren(m_places->itemFromIndex(index)); });
        connect(this, &QTreeView::clicked, this, &FolderTree::nodeClicked);
        return;
    }
    m_model = new QFileSystemModel(this);
    m_model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    m_model->setRootPath(QDir::rootPath());
    setModel(m_model);
    for (int column = 1; column < m_model->columnCount(); ++column)
        hideColumn(column);
    connect(m_model, &QFileSystemModel::directoryLoaded, this, [this](const QString& loaded) {
        if (!m_wanted.isEmpty() && m_wanted.startsWith(loaded))
            openToWanted();
    });
    connect(this, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { Q_EMIT folderClicked(m_model->filePath(index)); });
}

void FolderTree::showFolder(const QString& folder)
{
    if (!m_model)
        return;
    m_wanted = QDir::cleanPath(QDir(folder).absolutePath());
    openToWanted();
}

void FolderTree::openToWanted()
{
    const QModelIndex dir = m_model->index(m_wanted);
    for (QModelIndex up = dir.parent(); up.isValid(); up = up.parent())
        expand(up);
    setCurrentIndex(dir);
    scrollTo(dir);
}

void FolderTree::addNodes(const QVector<BrowserNode>& nodes)
{
    if (!m_places)
        return;
    for (const BrowserNode& node : nodes) {
        QStandardItem* parent = m_places->invisibleRootItem();
        if (!node.parent.isEmpty()) {
            const QModelIndex at = nodeIndex(node.parent);
            if (!at.isValid())
                continue;
            parent = m_places->itemFromIndex(at);
            // A parent that only groups others lists them, not a folder.
            if (parent->rowCount() == 1 && parent->child(0)->data(PlaceholderRole).toBool())
                parent->removeRow(0);
            parent->setData(true, ListedRole);
        }
        // A special node's folder is found when it is opened: the settings may change.
        parent->appendRow(
            folderItem(node.caption, node.key, QString(), node.iconKey,
                       IsExpandOnlyNode(node.key) || !ResolveNodeKey(node.key).isEmpty()));
    }
}

QModelIndex FolderTree::nodeIndex(const QString& key) const
{
    if (!m_places)
        return {};
    const QModelIndexList found = m_places->match(m_places->index(0, 0), KeyRole, key, 1,
                                                  Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.first();
}

QStringList FolderTree::childFolders(const QModelIndex& index) const
{
    QStringList folders;
    QStandardItem* item = m_places ? m_places->itemFromIndex(index) : nullptr;
    for (int row = 0; item && row < item->rowCount(); ++row) {
        const QString folder = item->child(row)->data(FolderRole).toString();
        if (!folder.isEmpty())
            folders << folder;
    }
    return folders;
}

void FolderTree::listChildren(QStandardItem* item)
{
    if (!item || item->data(ListedRole).toBool())
        return;
    item->setData(true, ListedRole);
    QString folder = item->data(FolderRole).toString();
    if (folder.isEmpty())
        folder = ResolveNodeKey(item->data(KeyRole).toString());
    if (folder.isEmpty())
        return;
    ++m_pending;
    auto* watcher = new QFutureWatcher<QStringList>(this);
    const QPersistentModelIndex at(item->index());
    connect(watcher, &QFutureWatcher<QStringList>::finished, this, [this, watcher, at, folder] {
        watcher->deleteLater();
        --m_pending;
        QStandardItem* node = at.isValid() ? m_places->itemFromIndex(at) : nullptr;
        if (!node)
            return;
        node->removeRows(0, node->rowCount());
        const QString base = AddSlash(folder);
        for (const QString& name : watcher->result())
            node->appendRow(
                folderItem(name, QString(), base + name, QStringLiteral("folder"), true));
    });
    watcher->setFuture(QtConcurrent::run([folder] { return subFolders(folder); }));
}

void FolderTree::nodeClicked(const QModelIndex& index)
{
    const QString key = index.data(KeyRole).toString();
    if (IsExpandOnlyNode(key)) {
        setExpanded(index, !isExpanded(index));
        return;
    }
    const QString folder = key.isEmpty() ? index.data(FolderRole).toString() : ResolveNodeKey(key);
    if (!folder.isEmpty())
        Q_EMIT folderClicked(folder);
}

} // namespace kavori
