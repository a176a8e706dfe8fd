#include "FolderTree.h"

#include <QDir>
#include <QFileSystemModel>

namespace kavori {

FolderTree::FolderTree(const QString& objectName, QWidget* parent) : QTreeView(parent)
{
    setObjectName(objectName);
    m_model = new QFileSystemModel(this);
    m_model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    m_model->setRootPath(QDir::rootPath());
    setModel(m_model);
    setHeaderHidden(true);
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

} // namespace kavori
