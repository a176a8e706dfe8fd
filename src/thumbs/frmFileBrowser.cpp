#include "frmFileBrowser.h"

#include "browse/BrowserNodes.h"
#include "browse/ThumbnailPages.h"
#include "files/FolderTree.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "platform/Twips.h"
#include "platform/Volumes.h"
#include "viewer/MainViewFrm.h"

#include <QDir>
#include <QFutureWatcher>
#include <QLabel>
#include <QListWidget>
#include <QSplitter>
#include <QVBoxLayout>
#include <QtConcurrent>

namespace kavori {

namespace {

constexpr int kPathRole = Qt::UserRole + 1;

// The pictures of a folder, in the thumbnails' order; movies are not shown in the main window.
QStringList picturesOf(const QString& folder)
{
    QStringList pictures;
    for (const QString& f : ThumbnailFiles(folder)) {
        if (IsImageFile(f))
            pictures << f;
    }
    return pictures;
}

} // namespace

frmFileBrowser::frmFileBrowser(MainViewFrm* window) : QWidget(window), m_window(window)
{
    setObjectName(QStringLiteral("frmFileBrowser"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_divider = new QSplitter(Qt::Vertical, this);
    m_divider->setObjectName(QStringLiteral("lblDivider"));
    m_divider->setChildrenCollapsible(false);
    m_tree = new FolderTree(QStringLiteral("tvwFolders"), m_divider, FolderTree::Kind::Places);
    auto* lower = new QWidget(m_divider);
    auto* lowerLayout = new QVBoxLayout(lower);
    lowerLayout->setContentsMargins(0, 0, 0, 0);
    lowerLayout->setSpacing(2);
    m_path = new QLabel(lower);
    m_path->setObjectName(QStringLiteral("lblFolder"));
    m_path->setMinimumWidth(40);
    lowerLayout->addWidget(m_path);
    m_list = new QListWidget(lower);
    m_list->setObjectName(QStringLiteral("lstFiles"));
    m_list->setUniformItemSizes(true); // thousands of names lay out at once
    lowerLayout->addWidget(m_list, 1);
    layout->addWidget(m_divider);

    m_tree->addNodes(SpecialNodes());
    m_tree->expand(m_tree->nodeIndex(QStringLiteral("mycomputer")));
    // The drives are asked for aside: a network drive that does not answer holds nothing up.
    auto* drives = new QFutureWatcher<QVector<Volume>>(this);
    connect(drives, &QFutureWatcher<QVector<Volume>>::finished, this, [this, drives] {
        drives->deleteLater();
        m_tree->addNodes(DriveNodes(drives->result()));
        m_tree->expand(m_tree->nodeIndex(QStringLiteral("mycomputer")));
        m_drivesAdded = true;
    });
    drives->setFuture(QtConcurrent::run([] { return LogicalDrives(); }));

    connect(m_tree, &FolderTree::folderClicked, this, &frmFileBrowser::setFolder);
    connect(m_list, &QListWidget::itemClicked, this, &frmFileBrowser::openItem);
    connect(m_list, &QListWidget::itemActivated, this, &frmFileBrowser::openItem);
}

void frmFileBrowser::setFolder(const QString& folder)
{
    m_folder = AddSlash(folder);
    m_path->setText(m_path->fontMetrics().elidedText(QDir::toNativeSeparators(m_folder),
                                                     Qt::ElideMiddle, std::max(40, width() - 8)));
    m_path->setToolTip(QDir::toNativeSeparators(m_folder));
    m_list->clear();
    const int job = ++m_listJob;
    ++m_listing;
    auto* watcher = new QFutureWatcher<QStringList>(this);
    connect(watcher, &QFutureWatcher<QStringList>::finished, this, [this, watcher, job] {
        watcher->deleteLater();
        --m_listing;
        if (job != m_listJob)
            return; // another folder was chosen meanwhile
        for (const QString& path : watcher->result()) {
            auto* item = new QListWidgetItem(FileNameOf(path), m_list);
            item->setData(kPathRole, path);
        }
        selectWanted();
        Q_EMIT folderListed();
    });
    const QString listed = m_folder;
    watcher->setFuture(QtConcurrent::run([listed] { return picturesOf(listed); }));
}

void frmFileBrowser::showFile(const QString& path)
{
    if (path.isEmpty())
        return;
    m_wantedFile = path;
    const QString folder = AddSlash(FolderOf(path));
    if (folder.compare(m_folder, Qt::CaseInsensitive) != 0)
        setFolder(folder);
    else if (m_listing == 0)
        selectWanted();
}

void frmFileBrowser::selectWanted()
{
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem* item = m_list->item(row);
        if (item->data(kPathRole).toString().compare(m_wantedFile, Qt::CaseInsensitive) == 0) {
            m_list->setCurrentItem(item);
            m_list->scrollToItem(item);
            break;
        }
    }
    m_wantedFile.clear();
}

void frmFileBrowser::openItem()
{
    QListWidgetItem* item = m_list->currentItem();
    if (item && m_window)
        m_window->openImage(item->data(kPathRole).toString());
}

int frmFileBrowser::barTwips() const
{
    const QList<int> sizes = m_divider->sizes();
    return sizes.isEmpty() ? -1 : PixelsToTwips(sizes.first());
}

void frmFileBrowser::setBarTwips(int twips)
{
    const int total = std::max(m_divider->height(), 200);
    const int top = twips < 0 ? total / 2 : std::clamp(TwipsToPixels(twips), 40, total - 40);
    m_divider->setSizes({top, std::max(40, total - top)});
}

} // namespace kavori
