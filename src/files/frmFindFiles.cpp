#include "frmFindFiles.h"

#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtConcurrent>

namespace kavori {

namespace {

QPushButton* button(QWidget* parent, const char* name, const QString& caption)
{
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setAutoDefault(false);
    return b;
}

enum Column { NameColumn, FolderColumn, SizeColumn, DateColumn };

} // namespace

frmFindFiles::frmFindFiles(FindKind kind, const QString& folder, QWidget* parent)
    : QDialog(parent), m_kind(kind)
{
    const bool shows = kind == FindKind::SlideShows;
    setObjectName(QStringLiteral("frmFindFiles"));
    setWindowTitle(title());

    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("txtFindName"));
    m_name->setPlaceholderText(shows ? QStringLiteral("part of a name, or wildcards like holi*.kav")
                                     : QStringLiteral("part of a name, or wildcards like *.jpg"));
    m_name->setClearButtonEnabled(true);
    m_folder = new QLineEdit(
        folder.isEmpty() ? QString() : QDir::toNativeSeparators(QDir(folder).absolutePath()), this);
    m_folder->setObjectName(QStringLiteral("txtFindFolder"));
    m_browse = button(this, "CmdBrowse", QStringLiteral("&Browse..."));
    m_find = button(this, "CmdFind", QStringLiteral("&Find"));
    m_cancel = button(this, "CmdCancelSearch", QStringLiteral("&Stop"));
    m_cancel->setEnabled(false);

    auto* where = new QGridLayout;
    where->addWidget(new QLabel(QStringLiteral("&Name:"), this), 0, 0);
    where->addWidget(m_name, 0, 1);
    where->addWidget(m_find, 0, 2);
    where->addWidget(new QLabel(QStringLiteral("&Look in:"), this), 1, 0);
    where->addWidget(m_folder, 1, 1);
    where->addWidget(m_browse, 1, 2);
    where->addWidget(new QLabel(QStringLiteral("(and its subfolders)"), this), 2, 1);
    where->addWidget(m_cancel, 2, 2);
    where->setColumnStretch(1, 1);
    qobject_cast<QLabel*>(where->itemAtPosition(0, 0)->widget())->setBuddy(m_name);
    qobject_cast<QLabel*>(where->itemAtPosition(1, 0)->widget())->setBuddy(m_folder);

    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("lstFound"));
    m_list->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Folder"),
                             QStringLiteral("Size"), QStringLiteral("Date")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAlternatingRowColors(true);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(FolderColumn, QHeaderView::Stretch);
    m_list->setColumnWidth(NameColumn, 180);
    m_list->header()->setSectionResizeMode(SizeColumn, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(DateColumn, QHeaderView::ResizeToContents);
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("lblFindCount"));

    m_open = button(this, "CmdOpen", QStringLiteral("&Open"));
    m_open->setEnabled(false);
    m_play = button(this, "CmdPlay", QStringLiteral("&Play"));
    m_play->setEnabled(false);
    m_play->setVisible(shows);
    auto* close = button(this, "CmdClose", QStringLiteral("C&lose"));
    auto* foot = new QHBoxLayout;
    foot->addWidget(m_count, 1);
    foot->addWidget(m_open);
    foot->addWidget(m_play);
    foot->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(where);
    layout->addWidget(m_list, 1);
    layout->addLayout(foot);
    resize(680, 440);

    m_tick = new QTimer(this);
    m_tick->setInterval(150);
    connect(m_tick, &QTimer::timeout, this, &frmFindFiles::showCount);
    connect(m_browse, &QPushButton::clicked, this, [this] {
        const QString chosen = CurrentPrompts().chooseFolder(
            QStringLiteral("Look in"), QDir::fromNativeSeparators(m_folder->text()));
        if (!chosen.isEmpty())
            m_folder->setText(QDir::toNativeSeparators(QDir(chosen).absolutePath()));
    });
    connect(m_find, &QPushButton::clicked, this, &frmFindFiles::search);
    // Enter searches from the boxes and opens from the list, so no button is the default.
    connect(m_name, &QLineEdit::returnPressed, this, &frmFindFiles::search);
    connect(m_folder, &QLineEdit::returnPressed, this, &frmFindFiles::search);
    connect(m_cancel, &QPushButton::clicked, this, &frmFindFiles::cancelSearch);
    connect(m_open, &QPushButton::clicked, this, [this] { choose(Action::Open); });
    connect(m_play, &QPushButton::clicked, this, [this] { choose(Action::Play); });
    connect(close, &QPushButton::clicked, this, &frmFindFiles::reject);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this] { choose(Action::Open); });
    connect(m_list, &QTreeWidget::itemActivated, this, [this] { choose(Action::Open); });
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        m_open->setEnabled(item && !m_searching);
        m_play->setEnabled(item && !m_searching);
    });
    connect(&m_watcher, &QFutureWatcher<FileSearchResult>::finished, this,
            &frmFindFiles::searchDone);
}

frmFindFiles::~frmFindFiles()
{
    // A search still running stops before the dialog goes.
    m_stop = true;
    m_watcher.waitForFinished();
}

QString frmFindFiles::title() const
{
    return AppTitle() + (m_kind == FindKind::Pictures ? QStringLiteral(" - [Find Images]")
                                                      : QStringLiteral(" - [Find Slide Shows]"));
}

void frmFindFiles::search()
{
    if (m_searching)
        return;
    const QString root = QDir::fromNativeSeparators(m_folder->text().trimmed());
    const QString refusal = FindRefusal(root);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, title());
        return;
    }
    m_searchText = m_name->text().trimmed();
    m_searchRoot = QDir(root).absolutePath();
    m_stop = false;
    m_found = 0;
    m_list->clear();
    setSearching(true);
    showCount();
    const FindKind kind = m_kind;
    const QString text = m_searchText;
    const QString from = m_searchRoot;
    m_watcher.setFuture(QtConcurrent::run(
        [this, from, text, kind] { return FindFiles(from, text, kind, &m_stop, &m_found); }));
}

void frmFindFiles::cancelSearch()
{
    if (m_searching)
        m_stop = true;
}

void frmFindFiles::waitForSearch()
{
    while (m_searching)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

void frmFindFiles::setSearching(bool on)
{
    m_searching = on;
    m_find->setEnabled(!on);
    m_browse->setEnabled(!on);
    m_name->setEnabled(!on);
    m_folder->setEnabled(!on);
    m_cancel->setEnabled(on);
    m_open->setEnabled(!on && m_list->currentItem());
    m_play->setEnabled(!on && m_list->currentItem());
    if (on)
        m_tick->start();
    else
        m_tick->stop();
}

void frmFindFiles::showCount()
{
    m_count->setText(FindCountText(m_kind, m_found.load(), true));
}

void frmFindFiles::searchDone()
{
    if (!m_searching)
        return; // the dialog was closed meanwhile
    const FileSearchResult result = m_watcher.result();
    QList<QTreeWidgetItem*> rows;
    const QLocale locale;
    for (const FoundFile& file : result.files) {
        auto* row = new QTreeWidgetItem(
            {FileNameOf(file.path), QDir::toNativeSeparators(QFileInfo(file.path).absolutePath()),
             FoundSizeText(file.size), locale.toString(file.modified, QLocale::ShortFormat)});
        row->setData(NameColumn, Qt::UserRole, file.path);
        row->setTextAlignment(SizeColumn, Qt::AlignRight | Qt::AlignVCenter);
        row->setToolTip(NameColumn, QDir::toNativeSeparators(file.path));
        rows << row;
    }
    m_list->addTopLevelItems(rows);
    if (!rows.isEmpty())
        m_list->setCurrentItem(rows.first());
    setSearching(false);
    const int count = int(result.files.size());
    m_count->setText(FindCountText(m_kind, count, false, result.cancelled));
    if (count == 0 && !result.cancelled)
        MsgBox(NothingFoundMessage(m_kind, m_searchText, m_searchRoot), vbInformation, title());
    if (!rows.isEmpty())
        m_list->setFocus();
}

QStringList frmFindFiles::results() const
{
    QStringList paths;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        paths << m_list->topLevelItem(i)->data(NameColumn, Qt::UserRole).toString();
    return paths;
}

QString frmFindFiles::countText() const
{
    return m_count->text();
}

void frmFindFiles::selectResult(int row)
{
    m_list->setCurrentItem(m_list->topLevelItem(row));
}

void frmFindFiles::choose(Action action)
{
    if (m_searching || m_action != Action::None)
        return; // a double-click that also activates chooses once
    const QTreeWidgetItem* item = m_list->currentItem();
    if (!item) {
        MsgBox(m_kind == FindKind::Pictures
                   ? QStringLiteral("Select a picture in the list first...")
                   : QStringLiteral("Select a slide show in the list first..."),
               vbExclamation, title());
        return;
    }
    m_chosen = item->data(NameColumn, Qt::UserRole).toString();
    m_action = action;
    accept();
}

void frmFindFiles::reject()
{
    if (m_searching) {
        m_stop = true;
        m_watcher.waitForFinished();
        m_searching = false;
        m_tick->stop();
    }
    m_action = Action::None;
    QDialog::reject();
}

} // namespace kavori
