#include "frmCopyImages.h"

#include "FolderPane.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

QString StartFolder(const QString& currentFile)
{
    if (IsFullPath(currentFile) && QFileInfo(FolderOf(currentFile)).isDir())
        return FolderOf(currentFile);
    const QString favorite = CurrentSettings().FavoriteFolder;
    return QFileInfo(favorite).isDir() ? favorite : AppPath();
}

QMenu* QuickFolderMenu(QWidget* parent, const std::function<void(const QString&)>& chosen)
{
    auto* menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("mnuQuickFolders"));
    const Settings& s = CurrentSettings();
    for (int i = 0; i < 12; ++i) {
        const QString path = s.QuickFolderPath[size_t(i)];
        const QString name = s.QuickFolder[size_t(i)].isEmpty() ? path : s.QuickFolder[size_t(i)];
        QAction* entry = menu->addAction(QStringLiteral("F%1  ").arg(i + 1) +
                                         (name.isEmpty() ? QStringLiteral("(not set)") : name));
        entry->setObjectName(QStringLiteral("mnuQuick%1").arg(i + 1));
        entry->setEnabled(!path.isEmpty() && QFileInfo(path).isDir());
        QObject::connect(entry, &QAction::triggered, parent, [chosen, path] { chosen(path); });
    }
    return menu;
}

frmCopyImages::frmCopyImages(const QString& currentFile, QWidget* parent, bool sounds)
    : frmCopyImages(FileJobKind::Copy, currentFile, sounds, parent)
{}

frmCopyImages::frmCopyImages(FileJobKind kind, const QString& currentFile, bool sounds,
                             QWidget* parent)
    : QDialog(parent), m_kind(kind), m_currentFile(currentFile)
{
    build(sounds);
}

frmMoveImages::frmMoveImages(const QString& currentFile, QWidget* parent, bool sounds)
    : frmCopyImages(FileJobKind::Move, currentFile, sounds, parent)
{
    setObjectName(QStringLiteral("frmMoveImages"));
}

void frmCopyImages::build(bool sounds)
{
    const bool move = m_kind == FileJobKind::Move;
    setObjectName(QStringLiteral("frmCopyImages"));
    const QString what = sounds ? QStringLiteral("Sound(s)") : QStringLiteral("Images");
    setWindowTitle(AppTitle() + QStringLiteral(" - [") +
                   (move ? QStringLiteral("Move ") : QStringLiteral("Copy ")) + what + u']');

    const QStringList patterns = sounds ? SoundPatterns() : ImagePatterns();
    m_source = new FolderPane(QStringLiteral("Dir1"), QStringLiteral("File1"), patterns, this);
    m_destination = new FolderPane(QStringLiteral("Dir2"), QString(), {}, this);

    auto* run = new QPushButton(move ? QStringLiteral("&Move") : QStringLiteral("&Copy"), this);
    run->setObjectName(move ? QStringLiteral("CmdMove") : QStringLiteral("CmdCopy"));
    run->setDefault(true);
    connect(run, &QPushButton::clicked, this, &frmCopyImages::run);
    auto* all = new QPushButton(QStringLiteral("Select &All"), this);
    all->setObjectName(QStringLiteral("CmdSelectAll"));
    connect(all, &QPushButton::clicked, m_source, &FolderPane::selectAll);
    auto* newFolder = new QPushButton(QStringLiteral("&New Folder"), this);
    newFolder->setObjectName(QStringLiteral("CmdNewFolder"));
    connect(newFolder, &QPushButton::clicked, this, [this] {
        const QString made = AskNewFolder(m_destination->folder());
        if (!made.isEmpty())
            m_destination->setFolder(made);
    });
    auto* quick = new QPushButton(QStringLiteral("&Quick Folders"), this);
    quick->setObjectName(QStringLiteral("CmdQuickFolders"));
    quick->setMenu(
        QuickFolderMenu(this, [this](const QString& path) { m_destination->setFolder(path); }));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("CmdClose"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* panes = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addWidget(new QLabel(QStringLiteral("Source folder and files:"), this));
    left->addWidget(m_source, 1);
    auto* right = new QVBoxLayout;
    right->addWidget(new QLabel(QStringLiteral("Destination folder:"), this));
    right->addWidget(m_destination, 1);
    panes->addLayout(left, 1);
    panes->addLayout(right, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(all);
    buttons->addWidget(newFolder);
    buttons->addWidget(quick);
    buttons->addStretch(1);
    buttons->addWidget(run);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(panes, 1);
    layout->addLayout(buttons);
    resize(720, 480);

    const QString start = StartFolder(m_currentFile);
    m_source->setFolder(start);
    const QString last = CurrentSettings().LastCopyToPath;
    m_destination->setFolder(QFileInfo(last).isDir() ? last : start);
}

void frmCopyImages::run()
{
    FileJobRequest request;
    request.kind = m_kind;
    request.sourceFolder = m_source->folder();
    request.destinationFolder = m_destination->folder();
    request.filesInSource = int(m_source->files().size());
    request.selected = m_source->selectedFiles();
    request.currentFile = m_currentFile;
    if (!ConfirmFileJob(request))
        return;
    {
        WaitDialog wait(AppTitle());
        RunFileJob(request, wait);
    }
    CurrentSettings().LastCopyToPath = request.destinationFolder;
    WriteSettingsKeys({QStringLiteral("LastCopyToPath")});
    m_source->refresh();
}

} // namespace kavori
