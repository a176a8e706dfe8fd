#include "FileJobs.h"

#include "FileDelete.h"
#include "FileFollowers.h"
#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"
#include "platform/Volumes.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"
#include "slideshow/SlideList.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kavori {

namespace {

bool isMove(const FileJobRequest& r)
{
    return r.kind == FileJobKind::Move;
}

QString shownFolder(const QString& folder)
{
    return QDir::toNativeSeparators(AddSlash(folder));
}

// Copies or moves one file over an existing target (already agreed to). The old target stays
// whole until the new one is, so a failed copy never costs the user the file they had.
bool transfer(const QString& source, const QString& target, bool move)
{
    return move ? MoveFileOver(source, target) : CopyFileOver(source, target);
}

} // namespace

QString FileJobRefusal(const FileJobRequest& r)
{
    const QString what = isMove(r) ? QStringLiteral("move") : QStringLiteral("copy");
    if (r.filesInSource == 0)
        return QStringLiteral("There are no files in the selected source directory, nothing to ") +
               what + QStringLiteral("...");
    if (r.selected.isEmpty())
        return QStringLiteral("No files are selected, nothing to ") + what + QStringLiteral("...");
    if (SamePath(AddSlash(r.sourceFolder), AddSlash(r.destinationFolder)))
        return QStringLiteral("The source and destination paths are the same, no need to ") + what +
               QStringLiteral(" files to selected destination...");
    return {};
}

QString FileJobQuestion(const FileJobRequest& r)
{
    const QString verb = isMove(r) ? QStringLiteral("Move") : QStringLiteral("Copy");
    if (r.selected.size() == 1)
        return verb + QStringLiteral(" the file:") + NewLine2() + FileNameOf(r.selected.first()) +
               NewLine2() + QStringLiteral("...to the following directory?") + NewLine2() +
               shownFolder(r.destinationFolder);
    return verb + u' ' + Format(int(r.selected.size()), QStringLiteral("###,###")) +
           QStringLiteral(" files to the following directory?") + NewLine2() +
           shownFolder(r.destinationFolder);
}

bool ConfirmFileJob(const FileJobRequest& r)
{
    const QString refusal = FileJobRefusal(r);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbInformation);
        return false;
    }
    return MsgBox(FileJobQuestion(r), vbYesNo + vbQuestion) == vbYes;
}

FileJobResult RunFileJob(const FileJobRequest& r, Progress& progress)
{
    FileJobResult result;
    const bool move = isMove(r);
    progress.setCaption(AppTitle() + (move ? QStringLiteral(" is preparing to move files...")
                                           : QStringLiteral(" is preparing to copy files...")));
    progress.setMaximum(int(r.selected.size()));
    const QString destination = AddSlash(r.destinationFolder);
    int step = 0;
    for (const QString& source : r.selected) {
        if (progress.cancelled()) {
            result.cancelled = true;
            MsgBox(move ? QStringLiteral("Move was canceled, all files were not moved...")
                        : QStringLiteral("File copy was canceled, all files were not copied..."),
                   vbInformation);
            break;
        }
        progress.setValue(step++);
        const QString name = FileNameOf(source);
        if (move && !r.currentFile.isEmpty() && SamePath(source, r.currentFile)) {
            MsgBox(QStringLiteral("Unable to move the file:") + NewLine2() + name + NewLine2() +
                       QStringLiteral("...image is currently open."),
                   vbExclamation);
            continue;
        }
        progress.setCaption(AppTitle() +
                            (move ? QStringLiteral(" is moving the file:")
                                  : QStringLiteral(" is copying the file:")) +
                            NewLine() + QDir::toNativeSeparators(source));
        const QString target = destination + name;
        if (QFileInfo::exists(target) &&
            MsgBox(QStringLiteral("The following file already exists in the destination folder:") +
                       NewLine2() + name + NewLine2() +
                       QStringLiteral("Replace this file with the one in the source folder?"),
                   vbYesNo + vbQuestion) != vbYes)
            continue;
        if (!transfer(source, target, move)) {
            MsgBox(QStringLiteral("Unable to ") +
                       (move ? QStringLiteral("move") : QStringLiteral("copy")) +
                       QStringLiteral(" the file:") + NewLine2() +
                       QDir::toNativeSeparators(source) + NewLine2() +
                       QStringLiteral("The destination may be full or read-only..."),
                   vbExclamation);
            continue;
        }
        if (CurrentSettings().CopyDescription)
            CopyDescriptionEntry(source, target);
        if (move) {
            RemoveDescriptionEntry(source);
            RenameFavoriteFile(source, target);
            result.slidesUpdated += MoveShowEntries(source, target);
        }
        result.sources << source;
        result.targets << target;
    }
    progress.setValue(step);
    if (result.slidesUpdated > 0)
        MsgBox(QStringLiteral("At least one of the selected file(s) is in the current slide show, "
                              "the entry(s) were updated as a result..."),
               vbInformation);
    return result;
}

bool FolderIsEmpty(const QString& folder)
{
    return QDir(folder).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden |
                                QDir::System);
}

bool IsDriveRoot(const QString& folder)
{
    const QString path = QDir(folder).absolutePath();
    if (QDir(path).isRoot())
        return true;
    for (const Volume& v : LogicalDrives())
        if (QDir(v.root).absolutePath() == path)
            return true;
    return false;
}

QStringList DeleteFiles(const DeleteRequest& r, bool* removedFolder)
{
    if (removedFolder)
        *removedFolder = false;
    const QString folder = shownFolder(r.folder);
    if (r.folderIsEmpty) {
        if (MsgBox(QStringLiteral("This directory is empty:") + NewLine2() + folder + NewLine2() +
                       QStringLiteral("Would you like to delete it?"),
                   vbYesNo + vbQuestion) == vbYes &&
            !IsDriveRoot(r.folder) && QDir().rmdir(r.folder) && removedFolder)
            *removedFolder = true;
        return {};
    }
    if (r.filesInFolder == 0) {
        MsgBox(QStringLiteral("There are no files in the selected directory to delete."),
               vbInformation);
        return {};
    }
    if (r.selected.isEmpty()) {
        MsgBox(
            QStringLiteral("Nothing was selected to delete.") + NewLine2() +
                QStringLiteral("Select the file(s) that you want to delete and then try again..."),
            vbInformation);
        return {};
    }
    if (MsgBox(QStringLiteral("You are about to delete ") +
                   Format(int(r.selected.size()), QStringLiteral("###,###")) +
                   QStringLiteral(" files from the directory:") + NewLine2() + folder + NewLine2() +
                   QStringLiteral("Are you sure?"),
               vbYesNo + vbQuestion + vbDefaultButton2) != vbYes)
        return {};
    QStringList gone;
    for (const QString& path : r.selected) {
        if (!r.currentFile.isEmpty() && SamePath(path, r.currentFile)) {
            MsgBox(QStringLiteral("Unable to delete:") + NewLine2() + FileNameOf(path) +
                       NewLine2() + QStringLiteral("Image is currently open..."),
                   vbExclamation);
            continue;
        }
        if (DeleteOneFile(path, false))
            gone << path;
    }
    return gone;
}

bool DeleteByKey(const QString& selected, const QString& currentFile)
{
    if (selected.isEmpty()) {
        MsgBox(QStringLiteral("Unable to delete file by pressing the delete key, nothing is "
                              "selected in the file list..."),
               vbInformation);
        return false;
    }
    if (!currentFile.isEmpty() && SamePath(selected, currentFile)) {
        MsgBox(QStringLiteral("Unable to delete this file, image is currently open..."),
               vbExclamation);
        return false;
    }
    return DeleteOneFile(selected, true);
}

bool DeleteEmptyFolder(const QString& folder, bool fromTree)
{
    if (IsDriveRoot(folder)) {
        MsgBox(QStringLiteral("You may not delete the root folder on your hard drive..."),
               vbExclamation);
        return false;
    }
    if (!FolderIsEmpty(folder)) {
        MsgBox(fromTree ? QStringLiteral("Unable to delete the directory:") + NewLine2() +
                              shownFolder(folder) + NewLine2() +
                              QStringLiteral("The selected path is not empty...")
                        : QStringLiteral("The selected folder is not empty, unable to delete..."),
               vbExclamation);
        return false;
    }
    if (MsgBox(QStringLiteral("You are about to delete the folder:") + NewLine2() +
                   shownFolder(folder) + NewLine2() + QStringLiteral("Are you sure?"),
               vbYesNo + vbQuestion + vbDefaultButton2) != vbYes)
        return false;
    return QDir().rmdir(QDir(folder).absolutePath());
}

QString RenameTitle()
{
    return AppTitle() + QStringLiteral(" - [Rename Image]");
}

QString RenameRefusal(int filesInFolder, const QString& selected, const QString& currentFile)
{
    if (filesInFolder == 0)
        return QStringLiteral("There are no files in the selected directory to rename...");
    if (selected.isEmpty())
        return QStringLiteral("A file has not been selected, nothing to rename...");
    if (!currentFile.isEmpty() && SamePath(selected, currentFile))
        return QStringLiteral("Unable to rename selected file, image is currently open...");
    return {};
}

QString RenameFile(const QString& path, const QString& title)
{
    QString suggestion = FileNameOf(path);
    for (;;) {
        const QString name =
            InputBox(QStringLiteral("Enter a new name for the file:"), title, suggestion);
        if (name.trimmed().isEmpty())
            return {};
        const RenameCheck check = CheckFileRename(path, name);
        if (!check.refusal.isEmpty()) {
            MsgBox(check.refusal, vbExclamation, title);
            // Characters no name may hold are asked for again; a taken or unchanged name ends.
            if (!check.refusal.startsWith(QLatin1String("A filename may not")))
                return {};
            suggestion = name;
            continue;
        }
        if (!QFile::rename(path, check.newPath)) {
            MsgBox(QStringLiteral("Unable to rename the file:") + NewLine2() +
                       QDir::toNativeSeparators(path) + NewLine2() +
                       QStringLiteral("The file may be read-only or in use..."),
                   vbExclamation, title);
            return {};
        }
        CopyDescriptionEntry(path, check.newPath);
        RemoveDescriptionEntry(path);
        RenameFavoriteFile(path, check.newPath);
        if (MoveShowEntries(path, check.newPath) > 0)
            MsgBox(QStringLiteral("At least one of the selected file(s) is in the current slide "
                                  "show, the entry(s) were updated as a result..."),
                   vbInformation, title);
        return check.newPath;
    }
}

QString AskNewFolder(const QString& parent)
{
    for (;;) {
        const QString name = InputBox(QStringLiteral("Enter the name of the folder to create:"),
                                      AppTitle(), QStringLiteral("New Folder"));
        QString refusal = FolderNameRefusal(name);
        if (refusal.isEmpty() && name.contains(u'/'))
            refusal = QStringLiteral(
                "You may not use the / character in a folder name, enter folder name again...");
        if (!refusal.isEmpty()) {
            MsgBox(refusal, vbExclamation);
            if (name.trimmed().isEmpty())
                return {};
            continue;
        }
        const QString path = AddSlash(parent) + name.trimmed();
        if (!QFileInfo(path).isDir() && !QDir().mkdir(path)) {
            MsgBox(QStringLiteral("Unable to create the folder:") + NewLine2() +
                       QDir::toNativeSeparators(path) + NewLine2() +
                       QStringLiteral("The drive may be full or read-only..."),
                   vbExclamation);
            return {};
        }
        return path;
    }
}

} // namespace kavori
