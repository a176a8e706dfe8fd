#include "BrowseWavFrm.h"

#include "SlideLoadFrm.h"
#include "SoundPreview.h"
#include "files/FolderTree.h"
#include "fileutil/FileDelete.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"
#include "playback/media/WaveChannel.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/ShowSounds.h"
#include "slideshow/SlideList.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include <functional>

namespace kavori {

namespace {

QString bonusSounds()
{
    return PathNoCase(AppPath(), QStringLiteral("Bonus/Sounds"));
}

// The show in memory and the SoundFile setting follow a file that was renamed, moved or
// deleted. Returns how many of their values changed.
int followInShow(const std::function<int(ShowSounds&)>& change)
{
    ShowSounds live = SoundsOfShow(CurrentShow());
    const QString soundFile = live.soundFile;
    const int count = change(live);
    if (count > 0) {
        ApplyShowSounds(live, CurrentShow());
        if (live.soundFile != soundFile)
            WriteSettingsKeys({QStringLiteral("SoundFile")});
    }
    return count;
}

} // namespace

QString BrowseWavFrm::Title(const QString& function)
{
    return AppTitle() + QStringLiteral(" - [") +
           (function.isEmpty() ? QStringLiteral("Select Sound File") : function) + u']';
}

BrowseWavFrm::BrowseWavFrm(QWidget* parent, const QString& folder) : QDialog(parent)
{
    setObjectName(QStringLiteral("BrowseWavFrm"));
    setWindowTitle(Title());

    m_dirs = new FolderTree(QStringLiteral("Dir1"), this);
    connect(m_dirs, &FolderTree::folderClicked, this,
            [this](const QString& folder) { setFolder(folder); });

    m_folderLabel = new QLabel(this);
    m_folderLabel->setObjectName(QStringLiteral("lblFolder"));
    m_folderLabel->setWordWrap(true);
    m_files = new QListWidget(this);
    m_files->setObjectName(QStringLiteral("File1"));
    connect(m_files, &QListWidget::itemDoubleClicked, this, [this] { play(); });

    auto* grid = new QGridLayout;
    int index = 0;
    auto add = [&](const char* name, const QString& caption, auto&& slot) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, slot);
        grid->addWidget(button, index / 4, index % 4);
        ++index;
        return button;
    };
    m_play = add("CmdPlay", QStringLiteral("&Play"), [this] { play(); });
    add("CmdSndFolder", QStringLiteral("&Bonus Sounds"), [this] { soundFolder(); });
    add("CmdInfo", QStringLiteral("&Information..."), [this] { information(); });
    add("CmdRename", QStringLiteral("Re&name..."), [this] { renameFile(); });
    add("CmdDelete", QStringLiteral("&Delete..."), [this] { deleteFile(); });
    add("CmdCopy", QStringLiteral("&Copy To..."), [this] { copyFile(false); });
    add("CmdMove", QStringLiteral("&Move To..."), [this] { copyFile(true); });
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("CmdOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("CmdCancel"));
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &BrowseWavFrm::accept);
    connect(cancel, &QPushButton::clicked, this, &BrowseWavFrm::reject);
    bottom->addWidget(ok);
    bottom->addWidget(cancel);
    m_preview = new SoundPreview(this, m_play);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(m_dirs);
    auto* right = new QWidget(splitter);
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addWidget(m_folderLabel);
    rightLayout->addWidget(m_files, 1);
    splitter->addWidget(right);
    splitter->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    layout->addLayout(grid);
    layout->addLayout(bottom);
    resize(640, 440);

    const QString last = CurrentSettings().LastSoundPath;
    if (!folder.isEmpty() && QFileInfo(folder).isDir())
        setFolder(folder);
    else if (!last.isEmpty() && QFileInfo(last).isDir())
        setFolder(last);
    else
        setFolder(bonusSounds());
}

BrowseWavFrm::~BrowseWavFrm() = default;

void BrowseWavFrm::setFolder(const QString& folder)
{
    m_preview->stop();
    m_folder = QDir(folder).absolutePath();
    m_folderLabel->setText(QDir::toNativeSeparators(m_folder));
    m_dirs->showFolder(m_folder);
    refreshFiles();
}

QString BrowseWavFrm::folder() const
{
    return m_folder;
}

void BrowseWavFrm::refreshFiles()
{
    const QString chosen = selectedFile();
    m_files->clear();
    for (const QString& file : SoundFilesIn(m_folder)) {
        auto* item = new QListWidgetItem(FileNameOf(file), m_files);
        item->setData(Qt::UserRole, file);
    }
    if (!chosen.isEmpty())
        selectFile(chosen);
}

QStringList BrowseWavFrm::files() const
{
    QStringList list;
    for (int row = 0; row < m_files->count(); ++row)
        list << m_files->item(row)->data(Qt::UserRole).toString();
    return list;
}

void BrowseWavFrm::selectFile(const QString& path)
{
    const QString wanted = QDir::cleanPath(path);
    for (int row = 0; row < m_files->count(); ++row) {
        if (m_files->item(row)->data(Qt::UserRole).toString() == wanted) {
            m_files->setCurrentRow(row);
            return;
        }
    }
}

QString BrowseWavFrm::selectedFile() const
{
    const QListWidgetItem* item = m_files->currentItem();
    return item && item->isSelected() ? item->data(Qt::UserRole).toString() : QString();
}

QString BrowseWavFrm::chosenOrRefuse(const QString& title)
{
    const QString file = selectedFile();
    if (file.isEmpty())
        MsgBox(QStringLiteral("Select a file from the list and then try again..."), vbExclamation,
               title);
    return file;
}

void BrowseWavFrm::play()
{
    if (m_preview->playing()) {
        m_preview->stop();
        return;
    }
    const QString file = chosenOrRefuse(Title());
    if (!file.isEmpty())
        m_preview->toggle(file);
}

void BrowseWavFrm::soundFolder()
{
    const QString folder = bonusSounds();
    if (!QFileInfo(folder).isDir()) {
        MsgBox(QStringLiteral("The bonus sounds folder could not be found:") + NewLine2() + folder,
               vbExclamation, Title());
        return;
    }
    setFolder(folder);
}

QString BrowseWavFrm::SoundFileInformation(const QString& path)
{
    const QFileInfo info(path);
    QString text = QStringLiteral("File name: ") + info.fileName() + NewLine() +
                   QStringLiteral("Folder: ") + QDir::toNativeSeparators(info.absolutePath()) +
                   NewLine() + QStringLiteral("Type: ") + DescribeFileType(path).description +
                   NewLine() + QStringLiteral("File size: ") +
                   Format(info.size(), QStringLiteral("###,###,##0")) + QStringLiteral(" bytes") +
                   NewLine() + QStringLiteral("Modified: ") +
                   info.lastModified().toString(QStringLiteral("yyyy-MM-dd hh:mm"));
    if (const auto ms = WaveDuration(path))
        text += NewLine() + QStringLiteral("Playing time: ") +
                Format(double(*ms) / 1000.0, QStringLiteral("###,##0.0")) +
                QStringLiteral(" seconds");
    return text;
}

void BrowseWavFrm::information()
{
    const QString title = Title(QStringLiteral("Sound File Information"));
    const QString file = chosenOrRefuse(title);
    if (!file.isEmpty())
        MsgBox(SoundFileInformation(file), vbInformation, title);
}

void BrowseWavFrm::renameFile()
{
    const QString title = Title(QStringLiteral("Rename Sound File"));
    const QString old = chosenOrRefuse(title);
    if (old.isEmpty())
        return;
    m_preview->stop();
    const QString renamed = AskAndRenameFile(old, title);
    if (renamed.isEmpty())
        return;
    refreshFiles();
    selectFile(renamed);
    const int followed = followInShow(
        [&](ShowSounds& sounds) { return RenameSoundReferences(sounds, old, renamed); });
    Q_EMIT soundRenamed(old, renamed);
    if (followed > 0)
        MsgBox(RenamedSoundNote(), vbInformation, title);
}

void BrowseWavFrm::deleteFile()
{
    const QString title = Title(QStringLiteral("Delete Sound File"));
    const QString file = chosenOrRefuse(title);
    if (file.isEmpty())
        return;
    // The program's own question and delete routine, so the trash setting, the description
    // entry and the favourites are handled as everywhere else.
    if (MsgBox(DeleteFileQuestion(file, CurrentSettings().UseRecycleBin),
               vbYesNo + vbQuestion + vbDefaultButton2, title) != vbYes)
        return;
    m_preview->stop();
    if (!DeleteOneFile(file, false)) {
        MsgBox(QStringLiteral("Unable to delete:") + NewLine2() + file, vbCritical, title);
        return;
    }
    refreshFiles();
    const int followed =
        followInShow([&](ShowSounds& sounds) { return ForgetSoundReferences(sounds, file); });
    Q_EMIT soundDeleted(file);
    if (followed > 0)
        MsgBox(DeletedSoundNote(), vbInformation, title);
}

void BrowseWavFrm::copyFile(bool move)
{
    const QString title =
        Title(move ? QStringLiteral("Move Sound(s)") : QStringLiteral("Copy Sound(s)"));
    const QString file = chosenOrRefuse(title);
    if (file.isEmpty())
        return;
    const QString target = CurrentPrompts().chooseFolder(title, m_folder);
    if (target.isEmpty())
        return;
    const QString folder = QDir(target).absolutePath();
    if (folder == m_folder) {
        MsgBox(move ? QStringLiteral("The source and destination paths are the same, no need to "
                                     "move files to selected destination...")
                    : QStringLiteral("The source and destination paths are the same, no need to "
                                     "copy files to selected destination..."),
               vbExclamation, title);
        return;
    }
    if (MsgBox((move ? QStringLiteral("Move the file:") : QStringLiteral("Copy the file:")) +
                   NewLine2() + FileNameOf(file) + NewLine2() +
                   QStringLiteral("...to the following directory?") + NewLine2() + folder,
               vbYesNo + vbQuestion, title) != vbYes)
        return;
    const QString destination = AddSlash(folder) + FileNameOf(file);
    if (QFileInfo::exists(destination)) {
        if (MsgBox(QStringLiteral("The following file already exists in the destination folder:") +
                       NewLine2() + destination + NewLine2() +
                       QStringLiteral("Replace this file with the one in the source folder?"),
                   vbYesNo + vbQuestion, title) != vbYes)
            return;
    }
    m_preview->stop();
    const bool done = move ? MoveFileOver(file, destination) : CopyFileOver(file, destination);
    if (!done) {
        MsgBox((move ? QStringLiteral("Unable to move the file:")
                     : QStringLiteral("Unable to copy the file:")) +
                   NewLine2() + file + NewLine2() + QStringLiteral("..."),
               vbCritical, title);
        return;
    }
    if (!move)
        return;
    refreshFiles();
    const int followed = followInShow(
        [&](ShowSounds& sounds) { return RenameSoundReferences(sounds, file, destination); });
    Q_EMIT soundRenamed(file, destination);
    if (followed > 0)
        MsgBox(QStringLiteral("At least one of the selected file(s) is in the current slide show, "
                              "the entry(s) were updated as a result..."),
               vbInformation, title);
}

void BrowseWavFrm::accept()
{
    if (selectedFile().isEmpty()) {
        MsgBox(QStringLiteral("Select a Wave Audio file or a MIDI (.mid) file from the list or "
                              "press the Cancel button..."),
               vbExclamation, Title());
        return;
    }
    m_preview->stop();
    CurrentSettings().LastSoundPath = m_folder;
    WriteSettingsKeys({QStringLiteral("LastSoundPath")});
    QDialog::accept();
}

void BrowseWavFrm::reject()
{
    m_preview->stop();
    QDialog::reject();
}

} // namespace kavori
