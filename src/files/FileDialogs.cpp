#include "FileDialogs.h"

#include "FolderPane.h"
#include "fileutil/FileJobs.h"
#include "frmCopyImages.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"

#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

namespace {

QPushButton* button(QDialog* dialog, const char* name, const QString& caption)
{
    auto* b = new QPushButton(caption, dialog);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

QPushButton* closeButton(QDialog* dialog)
{
    QPushButton* b = button(dialog, "CmdClose", QStringLiteral("Close"));
    QObject::connect(b, &QPushButton::clicked, dialog, &QDialog::reject);
    return b;
}

// A pane above a row of buttons.
void lay(QDialog* dialog, const QString& caption, QWidget* pane, const QList<QPushButton*>& buttons)
{
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (QPushButton* b : buttons)
        row->addWidget(b);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(new QLabel(caption, dialog));
    layout->addWidget(pane, 1);
    layout->addLayout(row);
    dialog->resize(460, 480);
}

QString parentOf(const QString& folder)
{
    QDir up(folder);
    up.cdUp();
    return up.absolutePath();
}

} // namespace

void ConnectDeleteKeys(FolderPane* pane, const QString& currentFile)
{
    QObject::connect(pane, &FolderPane::deleteFileKey, pane, [pane, currentFile] {
        const QStringList chosen = pane->selectedFiles();
        if (DeleteByKey(chosen.isEmpty() ? QString() : chosen.first(), currentFile))
            pane->refresh();
    });
    QObject::connect(pane, &FolderPane::deleteFolderKey, pane, [pane] {
        const QString folder = pane->folder();
        if (DeleteEmptyFolder(folder, true))
            pane->setFolder(parentOf(folder));
    });
}

frmMoveCurrentImg::frmMoveCurrentImg(const QString& currentFile, QWidget* parent)
    : QDialog(parent), m_currentFile(currentFile)
{
    setObjectName(QStringLiteral("frmMoveCurrentImg"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Move Current Image]"));
    m_destination = new FolderPane(QStringLiteral("Dir2"), QString(), {}, this);
    // The file's name is shown; a click on it shows the whole path, so a long one does not
    // stretch the dialog.
    m_current = new QLabel(this);
    m_current->setObjectName(QStringLiteral("lblCurrent"));
    m_current->setText(QStringLiteral("Complete path to current image file:") + u'\n' +
                       FileNameOf(currentFile));
    m_current->setToolTip(QStringLiteral("Click to see the complete path"));
    m_current->setWordWrap(true);
    m_current->setCursor(Qt::PointingHandCursor);
    m_current->installEventFilter(this);
    QPushButton* move = button(this, "CmdMove", QStringLiteral("&Move"));
    move->setDefault(true);
    connect(move, &QPushButton::clicked, this, &frmMoveCurrentImg::run);
    QPushButton* newFolder = button(this, "CmdNewFolder", QStringLiteral("&New Folder"));
    connect(newFolder, &QPushButton::clicked, this, [this] {
        const QString made = AskNewFolder(m_destination->folder());
        if (!made.isEmpty())
            m_destination->setFolder(made);
    });
    QPushButton* quick = button(this, "CmdQuickFolders", QStringLiteral("&Quick Folders"));
    quick->setMenu(
        QuickFolderMenu(this, [this](const QString& path) { m_destination->setFolder(path); }));
    lay(this, QStringLiteral("Move the current image to this folder:"), m_destination,
        {newFolder, quick, move, closeButton(this)});
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, m_current);
    static_cast<QVBoxLayout*>(layout())->insertSpacing(1, 8);
    const QString last = CurrentSettings().LastCopyToPath;
    m_destination->setFolder(QFileInfo(last).isDir() ? last : StartFolder(currentFile));
}

bool frmMoveCurrentImg::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_current && event->type() == QEvent::MouseButtonPress)
        showFullPath();
    return QDialog::eventFilter(watched, event);
}

void frmMoveCurrentImg::showFullPath()
{
    m_current->setText(QStringLiteral("Complete path to current image file:") + u'\n' +
                       QDir::toNativeSeparators(m_currentFile));
}

void frmMoveCurrentImg::run()
{
    if (!IsFullPath(m_currentFile) || !QFileInfo(m_currentFile).isFile()) {
        MsgBox(QStringLiteral("An image has not been opened yet, nothing to move..."),
               vbInformation);
        return;
    }
    FileJobRequest request;
    request.kind = FileJobKind::Move;
    request.sourceFolder = FolderOf(m_currentFile);
    request.destinationFolder = m_destination->folder();
    request.filesInSource = 1;
    request.selected = {m_currentFile};
    if (!ConfirmFileJob(request))
        return;
    FileJobResult result;
    {
        WaitDialog wait(AppTitle());
        result = RunFileJob(request, wait);
    }
    if (result.targets.isEmpty())
        return;
    m_movedTo = result.targets.first();
    CurrentSettings().LastCopyToPath = request.destinationFolder;
    accept();
}

DeleteImgFrm::DeleteImgFrm(const QString& currentFile, QWidget* parent)
    : QDialog(parent), m_currentFile(currentFile)
{
    setObjectName(QStringLiteral("DeleteImgFrm"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Delete Images]"));
    m_source =
        new FolderPane(QStringLiteral("Dir1"), QStringLiteral("File1"), ImagePatterns(), this);
    ConnectDeleteKeys(m_source, currentFile);
    QPushButton* all = button(this, "CmdSelectAll", QStringLiteral("Select &All"));
    connect(all, &QPushButton::clicked, m_source, &FolderPane::selectAll);
    QPushButton* del = button(this, "CmdDelete", QStringLiteral("&Delete"));
    connect(del, &QPushButton::clicked, this, &DeleteImgFrm::run);
    lay(this, QStringLiteral("Select the files to delete:"), m_source,
        {all, del, closeButton(this)});
    m_source->setFolder(StartFolder(currentFile));
}

void DeleteImgFrm::run()
{
    DeleteRequest request;
    request.folder = m_source->folder();
    request.folderIsEmpty = FolderIsEmpty(request.folder);
    request.filesInFolder = int(m_source->files().size());
    request.selected = m_source->selectedFiles();
    request.currentFile = m_currentFile;
    bool removedFolder = false;
    DeleteFiles(request, &removedFolder);
    if (removedFolder)
        m_source->setFolder(parentOf(request.folder));
    else
        m_source->refresh();
}

RenameImgFrm::RenameImgFrm(const QString& currentFile, QWidget* parent)
    : QDialog(parent), m_currentFile(currentFile)
{
    setObjectName(QStringLiteral("RenameImgFrm"));
    setWindowTitle(RenameTitle());
    m_source =
        new FolderPane(QStringLiteral("Dir1"), QStringLiteral("File1"), ImagePatterns(), this);
    m_source->fileList()->setSelectionMode(QAbstractItemView::SingleSelection);
    ConnectDeleteKeys(m_source, currentFile);
    QPushButton* rename = button(this, "CmdRename", QStringLiteral("&Rename"));
    rename->setDefault(true);
    connect(rename, &QPushButton::clicked, this, &RenameImgFrm::run);
    connect(m_source->fileList(), &QListWidget::itemDoubleClicked, this, &RenameImgFrm::run);
    lay(this, QStringLiteral("Select the file to rename:"), m_source, {rename, closeButton(this)});
    m_source->setFolder(StartFolder(currentFile));
}

void RenameImgFrm::run()
{
    const QStringList chosen = m_source->selectedFiles();
    const QString selected = chosen.isEmpty() ? QString() : chosen.first();
    const QString refusal = RenameRefusal(int(m_source->files().size()), selected, m_currentFile);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbInformation, RenameTitle());
        return;
    }
    if (RenameFile(selected).isEmpty())
        return;
    m_source->refresh();
    if (MsgBox(QStringLiteral("Would you like to rename another file?"), vbYesNo + vbQuestion,
               RenameTitle()) != vbYes)
        accept();
}

DeleteFolderFrm::DeleteFolderFrm(const QString& startFolder, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("DeleteFolderFrm"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Delete Folder]"));
    m_folders = new FolderPane(QStringLiteral("Dir1"), QString(), {}, this);
    ConnectDeleteKeys(m_folders, QString());
    QPushButton* del = button(this, "CmdDelete", QStringLiteral("&Delete"));
    connect(del, &QPushButton::clicked, this, &DeleteFolderFrm::run);
    lay(this, QStringLiteral("Select the empty folder to delete:"), m_folders,
        {del, closeButton(this)});
    m_folders->setFolder(startFolder);
}

void DeleteFolderFrm::run()
{
    const QString folder = m_folders->folder();
    if (DeleteEmptyFolder(folder, false))
        m_folders->setFolder(parentOf(folder));
}

} // namespace kavori
