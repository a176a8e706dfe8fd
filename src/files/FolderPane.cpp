#include "FolderPane.h"

#include "FolderTree.h"

#include "fileutil/MediaPatterns.h"
#include "platform/AppPaths.h"

#include <QCollator>
#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace kavori {

namespace {

QStringList patternsOf(const QString& text)
{
    return text.split(u';', Qt::SkipEmptyParts);
}

} // namespace

QStringList ImagePatterns()
{
    return patternsOf(DuplicatePattern(true, false));
}

QStringList SoundPatterns()
{
    const QString all = DuplicatePattern(false, true);
    return patternsOf(all.mid(DuplicatePattern(false, false).size()));
}

FolderPane::FolderPane(const QString& treeName, const QString& listName,
                       const QStringList& patterns, QWidget* parent)
    : QWidget(parent), m_patterns(patterns)
{
    m_path = new QLineEdit(this);
    m_path->setObjectName(treeName + QStringLiteral("Path"));
    connect(m_path, &QLineEdit::returnPressed, this, [this] {
        if (QFileInfo(m_path->text()).isDir())
            setFolder(m_path->text());
    });

    m_tree = new FolderTree(treeName, this);
    m_tree->installEventFilter(this);
    connect(m_tree, &FolderTree::folderClicked, this,
            [this](const QString& folder) { setFolder(folder); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_path);
    layout->addWidget(m_tree, 1);
    if (!listName.isEmpty()) {
        m_list = new QListWidget(this);
        m_list->setObjectName(listName);
        m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        m_list->setUniformItemSizes(true);
        m_list->installEventFilter(this);
        layout->addWidget(m_list, 1);
    }
}

void FolderPane::setFolder(const QString& folder)
{
    m_folder = AddSlash(QDir(folder).absolutePath());
    m_path->setText(QDir::toNativeSeparators(m_folder));
    m_tree->showFolder(m_folder);
    refresh();
    Q_EMIT folderChanged(m_folder);
}

QString FolderPane::folder() const
{
    return m_folder;
}

void FolderPane::refresh()
{
    if (!m_list)
        return;
    m_list->clear();
    QStringList names = QDir(m_folder).entryList(m_patterns, QDir::Files);
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(names.begin(), names.end(), collator);
    m_list->addItems(names);
}

QStringList FolderPane::files() const
{
    QStringList all;
    for (int row = 0; m_list && row < m_list->count(); ++row)
        all << m_folder + m_list->item(row)->text();
    return all;
}

QStringList FolderPane::selectedFiles() const
{
    QStringList chosen;
    for (int row = 0; m_list && row < m_list->count(); ++row)
        if (m_list->item(row)->isSelected())
            chosen << m_folder + m_list->item(row)->text();
    return chosen;
}

void FolderPane::selectFiles(const QStringList& paths)
{
    if (!m_list)
        return;
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem* item = m_list->item(row);
        item->setSelected(paths.contains(m_folder + item->text()));
    }
}

void FolderPane::selectAll()
{
    if (m_list)
        m_list->selectAll();
}

bool FolderPane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        if (watched == m_list)
            Q_EMIT deleteFileKey();
        else
            Q_EMIT deleteFolderKey();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace kavori
