#include "RemovableCommands.h"

#include "FileCommands.h"
#include "FileDialogs.h"
#include "FolderPane.h"
#include "fileutil/TreeCopy.h"
#include "frmCopyImages.h"
#include "platform/AppPaths.h"
#include "platform/DesktopPrograms.h"
#include "platform/Volumes.h"
#include "runtime/Commands.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "runtime/WaitDialog.h"
#include "viewer/MainViewFrm.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QStatusBar>

namespace kavori {

namespace {

// The medium to work on: the only one, or the one the user picks; empty when there is none or
// the choice was cancelled.
QString chooseMedium(const QString& title)
{
    const QVector<RemovableMedium> media = RemovableMedia();
    if (media.isEmpty()) {
        MsgBox(QStringLiteral("No removable disk was found.") + NewLine2() +
                   QStringLiteral("Insert a USB stick, memory card or disc, wait for it to "
                                  "appear on the desktop and try again..."),
               vbInformation);
        return {};
    }
    if (media.size() == 1)
        return media.first().root;
    QStringList items;
    for (const RemovableMedium& m : media)
        items << m.name + QStringLiteral("  (") + QDir::toNativeSeparators(m.root) + u')';
    const std::optional<QString> chosen =
        CurrentPrompts().chooseItem(AppTitle() + QStringLiteral(" - [") + title + u']',
                                    QStringLiteral("Select the removable disk to use:"), items);
    if (!chosen || !items.contains(*chosen))
        return {};
    return media[items.indexOf(*chosen)].root;
}

void copyWholeMedium(MainViewFrm* window)
{
    const QString medium = chooseMedium(QStringLiteral("Copy Removable Disk"));
    if (medium.isEmpty())
        return;
    const QString folder = CurrentPrompts().chooseFolder(
        QStringLiteral("Copy the removable disk into folder"), QDir::homePath());
    if (folder.isEmpty())
        return;
    const QString target = AddSlash(folder) + RemovableMediumName(medium);
    const QString refusal = TreeCopyRefusal(medium, target);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbInformation);
        return;
    }
    if (QFileInfo::exists(target) &&
        MsgBox(QStringLiteral("The folder:") + NewLine2() + QDir::toNativeSeparators(target) +
                   NewLine2() +
                   QStringLiteral("...already exists. Copy the disk into it, replacing files of "
                                  "the same name?"),
               vbYesNo + vbQuestion) != vbYes)
        return;
    TreeCopyOutcome outcome;
    {
        WaitDialog progress(AppTitle());
        progress.setCaption(QStringLiteral("Copying ") + QDir::toNativeSeparators(medium) +
                            QStringLiteral(" to:") + NewLine() + QDir::toNativeSeparators(target));
        outcome = CopyFolderTree(medium, target, progress);
    }
    switch (outcome.result) {
    case TreeCopyOutcome::Result::Done:
        window->statusBar()->showMessage(
            QStringLiteral("Copied ") + QString::number(outcome.files) +
                (outcome.files == 1 ? QStringLiteral(" file to ") : QStringLiteral(" files to ")) +
                QDir::toNativeSeparators(target),
            6000);
        break;
    case TreeCopyOutcome::Result::Cancelled:
        MsgBox(QStringLiteral("The copy was canceled, ") + QString::number(outcome.files) +
                   QStringLiteral(" file(s) had been copied to:") + NewLine2() +
                   QDir::toNativeSeparators(target),
               vbInformation);
        break;
    case TreeCopyOutcome::Result::Failed:
        MsgBox(QStringLiteral("Unable to copy the file:") + NewLine2() +
                   QDir::toNativeSeparators(outcome.problem) + NewLine2() +
                   QStringLiteral("The destination may be full or read-only, or the disk was "
                                  "taken out..."),
               vbExclamation);
        break;
    }
}

} // namespace

void ConnectRemovableCommands(MainViewFrm* window)
{
    EnableCommand(window, "mnuCopyImgToFloppy", [window] {
        const QString medium = chooseMedium(QStringLiteral("Copy Images to Removable Disk"));
        if (medium.isEmpty())
            return;
        frmCopyImages dialog(CurrentPictureFile(window), window);
        dialog.destination()->setFolder(medium);
        dialog.exec();
    });
    EnableCommand(window, "mnuCopyFromFloppy", [window] {
        const QString medium = chooseMedium(QStringLiteral("Copy Images from Removable Disk"));
        if (medium.isEmpty())
            return;
        frmCopyImages dialog(CurrentPictureFile(window), window);
        dialog.source()->setFolder(medium);
        dialog.exec();
    });
    EnableCommand(window, "mnuDelImgOnFloppy", [window] {
        const QString medium = chooseMedium(QStringLiteral("Delete Images on Removable Disk"));
        if (medium.isEmpty())
            return;
        DeleteImgFrm dialog(CurrentPictureFile(window), window);
        dialog.source()->setFolder(medium);
        dialog.exec();
    });
    EnableCommand(window, "mnuDiskcopyFloppy", [window] { copyWholeMedium(window); });
    EnableCommand(window, "mnuFormatFloppy", [] {
        // Formatting erases a disk: the desktop's own utility does it, with its own questions.
        if (StartDesktopProgram(DiskUtilityPrograms()))
            return;
        MsgBox(QStringLiteral("No disk utility was found on this system to format the disk.") +
                   NewLine2() + QStringLiteral("Install one of ") +
                   DesktopProgramNames(DiskUtilityPrograms()) +
                   QStringLiteral(" and use it to format the removable disk..."),
               vbInformation);
    });
}

} // namespace kavori
