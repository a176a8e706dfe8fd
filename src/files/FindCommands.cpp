#include "FindCommands.h"

#include "FileCommands.h"
#include "editor/SlideLoadFrm.h"
#include "frmFindFiles.h"
#include "platform/AppPaths.h"
#include "playback/PlaybackCommands.h"
#include "runtime/Commands.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "viewer/MainViewFrm.h"

#include <QDir>
#include <QFileInfo>

namespace kavori {

namespace {

// Where a search starts: the folder of the picture on screen, else the home folder.
QString pictureFolder(const MainViewFrm* window)
{
    const QString current = CurrentPictureFile(window);
    return current.isEmpty() ? QDir::homePath() : FolderOf(current);
}

void findImage(MainViewFrm* window)
{
    frmFindFiles dialog(FindKind::Pictures, pictureFolder(window), window);
    if (dialog.exec() == QDialog::Accepted && dialog.action() == frmFindFiles::Action::Open)
        window->openImage(dialog.chosenFile());
}

void findSlideShow(MainViewFrm* window)
{
    frmFindFiles dialog(FindKind::SlideShows, SlideShowFolder(), window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString show = dialog.chosenFile();
    if (dialog.action() == frmFindFiles::Action::Play) {
        PlaySlideShowFile(show, window);
        return;
    }
    // Loading replaces the show in memory: its unsaved changes are asked about first, as the
    // editor's own Load does.
    if (CurrentShow().changed &&
        MsgBox(QStringLiteral("The current slide show has changed.") + NewLine2() +
                   QStringLiteral("Load a new slide show anyway?"),
               vbYesNo + vbQuestion, SlideLoadFrm::Title()) != vbYes)
        return;
    OpenSlideShowEditor(window, show);
}

} // namespace

void ConnectFindCommands(MainViewFrm* window)
{
    EnableCommand(window, "mnuFindImage", [window] { findImage(window); });
    EnableCommand(window, "mnuFindSlideShow", [window] { findSlideShow(window); });
}

} // namespace kavori
