#include "ZipCommands.h"

#include "FileCommands.h"
#include "fileutil/ZipArchive.h"
#include "platform/AppPaths.h"
#include "runtime/Commands.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "runtime/WaitDialog.h"
#include "viewer/MainViewFrm.h"

#include <QDir>
#include <QFileInfo>
#include <QStatusBar>

namespace kavori {

namespace {

const QString kFilter = QStringLiteral("Zip Files (*.zip)");

// Asks where the archive goes, starting from the suggested name; empty when cancelled.
QString askArchive(const QString& title, const QString& suggested)
{
    QString archive = CurrentPrompts().saveFile(title, suggested, kFilter);
    if (!archive.isEmpty() && QFileInfo(archive).suffix().isEmpty())
        archive += QStringLiteral(".zip");
    return archive;
}

// Writes the archive with the wait dialog and tells how it went.
void makeArchive(MainViewFrm* window, const QString& archive, const QList<ZipEntry>& entries)
{
    ZipOutcome outcome;
    {
        WaitDialog progress(AppTitle());
        progress.setCaption(AppTitle() + QStringLiteral(" is making the zip file:") + NewLine() +
                            QDir::toNativeSeparators(archive));
        outcome = WriteZip(archive, entries, progress);
    }
    switch (outcome.result) {
    case ZipResult::Done:
        window->statusBar()->showMessage(
            QStringLiteral("Zipped ") + QString::number(entries.size()) +
                (entries.size() == 1 ? QStringLiteral(" file into ")
                                     : QStringLiteral(" files into ")) +
                QDir::toNativeSeparators(archive),
            6000);
        break;
    case ZipResult::Cancelled:
        MsgBox(QStringLiteral("Zip was canceled, the zip file was not made..."), vbInformation);
        break;
    case ZipResult::Failed:
        MsgBox(QStringLiteral("Unable to make the zip file:") + NewLine2() +
                   QDir::toNativeSeparators(archive) + NewLine2() +
                   QDir::toNativeSeparators(outcome.problem) + NewLine2() +
                   QStringLiteral("The destination may be full or read-only..."),
               vbExclamation);
        break;
    }
}

// The folder to start choosing from: the picture's own, else the user's pictures.
QString startFolder(const MainViewFrm* window)
{
    const QString file = CurrentPictureFile(window);
    return file.isEmpty() ? QDir::homePath() : FolderOf(file);
}

void zipCurrentImage(MainViewFrm* window)
{
    if (!NeedsPicture(window, QStringLiteral("zip it")))
        return;
    const QString file = CurrentPictureFile(window);
    const QString archive = askArchive(QStringLiteral("Zip Current Image"), ZipNameFor(file));
    if (!archive.isEmpty())
        makeArchive(window, archive, {{file, QFileInfo(file).fileName()}});
}

void zipImagesInFolder(MainViewFrm* window)
{
    const QString folder =
        CurrentPrompts().chooseFolder(QStringLiteral("Zip Images in Folder"), startFolder(window));
    if (folder.isEmpty())
        return;
    const QList<ZipEntry> entries = FolderPictureEntries(folder);
    if (entries.isEmpty()) {
        MsgBox(QStringLiteral("There are no images in this folder to zip:") + NewLine2() +
                   QDir::toNativeSeparators(folder),
               vbInformation);
        return;
    }
    const QString archive = askArchive(QStringLiteral("Zip Images in Folder"), ZipNameFor(folder));
    if (!archive.isEmpty())
        makeArchive(window, archive, entries);
}

void zipFolder(MainViewFrm* window)
{
    const QString folder =
        CurrentPrompts().chooseFolder(QStringLiteral("Zip Folder"), startFolder(window));
    if (folder.isEmpty())
        return;
    const QString archive = askArchive(QStringLiteral("Zip Folder"), ZipNameFor(folder));
    if (archive.isEmpty())
        return;
    QList<ZipEntry> entries;
    {
        WaitDialog progress(AppTitle());
        progress.setCaption(AppTitle() + QStringLiteral(" is looking for files in:") + NewLine() +
                            QDir::toNativeSeparators(folder));
        entries = FolderTreeEntries(folder, progress);
        if (progress.cancelled())
            return;
    }
    // An older archive of the same name inside the folder is not packed into the new one.
    const QString target = QFileInfo(archive).absoluteFilePath();
    entries.removeIf(
        [&](const ZipEntry& e) { return QFileInfo(e.file).absoluteFilePath() == target; });
    if (entries.isEmpty()) {
        MsgBox(QStringLiteral("There are no files in this folder to zip:") + NewLine2() +
                   QDir::toNativeSeparators(folder),
               vbInformation);
        return;
    }
    makeArchive(window, archive, entries);
}

} // namespace

void ConnectZipCommands(MainViewFrm* window)
{
    EnableCommand(window, "mnuZipCurImage", [window] { zipCurrentImage(window); });
    EnableCommand(window, "mnuZipImgFolder", [window] { zipImagesInFolder(window); });
    EnableCommand(window, "mnuZipFolder", [window] { zipFolder(window); });
}

} // namespace kavori
