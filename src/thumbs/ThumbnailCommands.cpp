#include "ThumbnailCommands.h"

#include "frmThumbnail.h"
#include "platform/AppPaths.h"
#include "runtime/Commands.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "viewer/MainViewFrm.h"

#include <QFileInfo>

namespace kavori {

namespace {

// The folder of the picture in the window, or empty when it has no file.
QString currentFolder(const MainViewFrm* window)
{
    const QString path = window->document().currentFile();
    return IsFullPath(path) && QFileInfo(path).isFile() ? FolderOf(path) : QString();
}

} // namespace

frmThumbnail* OpenThumbnailBrowser(MainViewFrm* window, const QString& folder)
{
    QString chosen = folder;
    if (chosen.isEmpty() || !QFileInfo(chosen).isDir()) {
        const QString start = !chosen.isEmpty() ? chosen : CurrentSettings().FavoriteFolder;
        chosen =
            CurrentPrompts().chooseFolder(QStringLiteral("Select a folder to browse..."), start);
        if (chosen.isEmpty())
            return nullptr;
    }
    auto* browser = window->findChild<frmThumbnail*>(QStringLiteral("frmThumbnail"));
    if (!browser) {
        browser = new frmThumbnail(window);
        browser->setAttribute(Qt::WA_DeleteOnClose);
    }
    browser->show();
    browser->raise();
    browser->activateWindow();
    browser->showFolder(chosen);
    return browser;
}

void ConnectThumbnailCommands(MainViewFrm* window)
{
    EnableCommand(window, "mnuThumbnailBrowse",
                  [window] { OpenThumbnailBrowser(window, currentFolder(window)); });
    EnableCommand(window, "mnuThumbnailSelect",
                  [window] { OpenThumbnailBrowser(window, QString()); });
}

} // namespace kavori
