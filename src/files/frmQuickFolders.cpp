#include "frmQuickFolders.h"

#include "fileutil/QuickFolders.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kavori {

frmQuickFolders::frmQuickFolders(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmQuickFolders"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Quick Folders]"));

    m_grid = new QTableWidget(kQuickFolders, 3, this);
    m_grid->setObjectName(QStringLiteral("grdQuick"));
    m_grid->setHorizontalHeaderLabels(
        {QStringLiteral("Key"), QStringLiteral("Name"), QStringLiteral("Folder")});
    m_grid->verticalHeader()->hide();
    m_grid->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    const Settings& s = CurrentSettings();
    for (int row = 0; row < kQuickFolders; ++row) {
        auto* key = new QTableWidgetItem(QStringLiteral("F") + QString::number(row + 1));
        key->setFlags(key->flags() & ~Qt::ItemIsEditable);
        auto* folder =
            new QTableWidgetItem(QDir::toNativeSeparators(s.QuickFolderPath[size_t(row)]));
        folder->setData(Qt::UserRole, s.QuickFolderPath[size_t(row)]);
        folder->setFlags(folder->flags() & ~Qt::ItemIsEditable);
        m_grid->setItem(row, 0, key);
        m_grid->setItem(row, 1, new QTableWidgetItem(s.QuickFolder[size_t(row)]));
        m_grid->setItem(row, 2, folder);
    }
    m_grid->resizeColumnToContents(0);
    m_grid->setColumnWidth(1, 140);
    m_grid->selectRow(0);
    connect(m_grid, &QTableWidget::cellDoubleClicked, this, [this](int, int column) {
        if (column == 2)
            chooseFolder();
    });

    auto* browse = new QPushButton(QStringLiteral("Choose &Folder..."), this);
    browse->setObjectName(QStringLiteral("CmdBrowse"));
    connect(browse, &QPushButton::clicked, this, &frmQuickFolders::chooseFolder);
    auto* clear = new QPushButton(QStringLiteral("C&lear"), this);
    clear->setObjectName(QStringLiteral("CmdClear"));
    connect(clear, &QPushButton::clicked, this, &frmQuickFolders::clearFolder);

    auto* actions = new QGroupBox(QStringLiteral("A quick folder button on the toolbar:"), this);
    m_copy = new QRadioButton(QStringLiteral("&Copies the current image there"), actions);
    m_copy->setObjectName(QStringLiteral("optCopy"));
    m_move = new QRadioButton(QStringLiteral("&Moves the current image there"), actions);
    m_move->setObjectName(QStringLiteral("optMove"));
    m_open = new QRadioButton(QStringLiteral("&Opens an image from there"), actions);
    m_open->setObjectName(QStringLiteral("optOpen"));
    auto* actionLayout = new QVBoxLayout(actions);
    for (QRadioButton* b : {m_copy, m_move, m_open})
        actionLayout->addWidget(b);
    switch (CurrentQuickAction()) {
    case QuickAction::Copy:
        m_copy->setChecked(true);
        break;
    case QuickAction::Move:
        m_move->setChecked(true);
        break;
    case QuickAction::Open:
        m_open->setChecked(true);
        break;
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("CmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CmdCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        save();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* row = new QHBoxLayout;
    row->addWidget(browse);
    row->addWidget(clear);
    row->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid, 1);
    layout->addLayout(row);
    layout->addWidget(actions);
    layout->addWidget(new QLabel(QStringLiteral("Ctrl and a key copies the current image to its "
                                                "folder; Ctrl, Shift and the key moves it."),
                                 this));
    layout->addWidget(buttons);
    resize(560, 520);
}

void frmQuickFolders::chooseFolder()
{
    const int row = m_grid->currentRow();
    if (row < 0) {
        MsgBox(QStringLiteral("Select a quick folder first and then try again..."), vbInformation);
        return;
    }
    const QString start = m_grid->item(row, 2)->data(Qt::UserRole).toString();
    const QString folder = CurrentPrompts().chooseFolder(
        QStringLiteral("Choose the folder of quick folder F") + QString::number(row + 1),
        start.isEmpty() ? CurrentSettings().FavoriteFolder : start);
    if (folder.isEmpty())
        return;
    const QString path = AddSlash(folder);
    m_grid->item(row, 2)->setData(Qt::UserRole, path);
    m_grid->item(row, 2)->setText(QDir::toNativeSeparators(path));
    if (m_grid->item(row, 1)->text().trimmed().isEmpty())
        m_grid->item(row, 1)->setText(QDir(path).dirName());
}

void frmQuickFolders::clearFolder()
{
    const int row = m_grid->currentRow();
    if (row < 0)
        return;
    m_grid->item(row, 1)->setText(QString());
    m_grid->item(row, 2)->setText(QString());
    m_grid->item(row, 2)->setData(Qt::UserRole, QString());
}

void frmQuickFolders::save()
{
    for (int row = 0; row < kQuickFolders; ++row)
        SetQuickFolder(row, m_grid->item(row, 1)->text(),
                       m_grid->item(row, 2)->data(Qt::UserRole).toString());
    CurrentSettings().LastQuickAction = m_move->isChecked() ? 1 : m_open->isChecked() ? 2 : 0;
    WriteQuickFolders();
}

} // namespace kavori
