#include "FileCommands.h"

#include "FileDialogs.h"
#include "fileutil/FileDelete.h"
#include "fileutil/FileJobs.h"
#include "frmCopyImages.h"
#include "frmDuplicateFiles.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QFileInfo>

namespace kavori {

namespace {

// The file of the picture in the window; empty for a picture that has none.
QString currentFile(const MainViewFrm* window)
{
    const QString path = window->document().currentFile();
    return IsFullPath(path) && QFileInfo(path).isFile() ? path : QString();
}

bool needsPicture(const MainViewFrm* window, const QString& doing)
{
    if (!currentFile(window).isEmpty())
        return true;
    MsgBox(QStringLiteral("An image has not been opened yet, unable to ") + doing +
               QStringLiteral("..."),
           vbInformation);
    return false;
}

} // namespace

void ConnectFileCommands(MainViewFrm* window)
{
    auto handle = [window](const char* name, auto&& slot) {
        auto* action = window->findChild<QAction*>(QString::fromLatin1(name));
        if (!action)
            return;
        action->setEnabled(true);
        QObject::connect(action, &QAction::triggered, window, slot);
    };
    handle("mnuFileCopyImages", [window] {
        frmCopyImages dialog(currentFile(window), window);
        dialog.exec();
    });
    handle("mnuMoveImages", [window] {
        frmMoveImages dialog(currentFile(window), window);
        dialog.exec();
    });
    handle("mnuMoveCurrentImg", [window] {
        if (!needsPicture(window, QStringLiteral("move")))
            return;
        frmMoveCurrentImg dialog(currentFile(window), window);
        if (dialog.exec() == QDialog::Accepted && !dialog.movedTo().isEmpty())
            window->followCurrentFile(dialog.movedTo());
    });
    handle("mnuDeleteImages", [window] {
        DeleteImgFrm dialog(currentFile(window), window);
        dialog.exec();
    });
    handle("mnuDeleteCurrentImage", [window] {
        if (!needsPicture(window, QStringLiteral("delete")))
            return;
        if (DeleteOneFile(currentFile(window), true))
            window->followCurrentFile(QString());
    });
    handle("mnuRenameImg", [window] {
        RenameImgFrm dialog(currentFile(window), window);
        dialog.exec();
    });
    handle("mnuRenameCurrentImg", [window] {
        if (!needsPicture(window, QStringLiteral("rename")))
            return;
        const QString renamed = RenameFile(currentFile(window));
        if (!renamed.isEmpty())
            window->followCurrentFile(renamed);
    });
    handle("mnuSearchDuplicate", [window] {
        frmDuplicateFiles dialog(window);
        dialog.exec();
    });
    handle("mnuDelEmptyFolder", [window] {
        DeleteFolderFrm dialog(StartFolder(currentFile(window)), window);
        dialog.exec();
    });
}

} // namespace kavori
