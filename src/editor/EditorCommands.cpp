#include "EditorCommands.h"

#include "SlideLoadFrm.h"
#include "frmPlaybackOptions.h"
#include "frmSlideWizard.h"

#include "fileutil/ShowDelete.h"
#include "platform/AppPaths.h"
#include "playback/PlaybackCommands.h"
#include "runtime/Commands.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"

#include <QDir>

namespace kavori {

namespace {

// The slide order is arranged in the editor, whose View List has every order command (up,
// down, top, bottom, reverse, random): the editor opens with that list in front. With no show
// in memory the user picks the show to arrange first.
void arrangeList(QWidget* window)
{
    const SlideShow& show = CurrentShow();
    if (show.path.isEmpty() && show.slides.isEmpty()) {
        const QString path = CurrentPrompts().openFile(QStringLiteral("Arrange Slide Show"),
                                                       SlideShowFolder(), SlideShowFilter());
        if (!path.isEmpty())
            OpenSlideShowEditor(window, path, EditorView::Arrange);
        return;
    }
    OpenSlideShowEditor(window, QString(), EditorView::Arrange);
}

// Deletes a show file the user picks, after one question that also says when it is the show
// open now or the screen saver's show; the lists that name it forget it.
void deleteSlideShow()
{
    const QString title = AppTitle() + QStringLiteral(" - [Delete Slide Show]");
    const QString path = CurrentPrompts().openFile(QStringLiteral("Delete Slide Show"),
                                                   SlideShowFolder(), SlideShowFilter());
    if (path.isEmpty())
        return;
    const QString refusal = DeleteShowRefusal(path);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, title);
        return;
    }
    const ShowUse use = ShowInUse(path);
    if (MsgBox(DeleteShowQuestion(path, use, CurrentSettings().UseRecycleBin),
               vbYesNo + vbQuestion + vbDefaultButton2, title) != vbYes)
        return;
    if (!DeleteSlideShowFile(path, use))
        MsgBox(QStringLiteral("Unable to delete the slide show file:") + NewLine2() +
                   QDir::toNativeSeparators(path) + NewLine2() +
                   QStringLiteral("The file may be in use or read-only..."),
               vbCritical, title);
}

} // namespace

void ConnectEditorCommands(QWidget* window)
{
    EnableCommand(window, "mnuSlideShow", [window] { OpenSlideShowEditor(window); });
    EnableCommand(window, "mnuDescOptions",
                  [window] { frmPlaybackOptions::Edit(window, frmPlaybackOptions::Descriptions); });
    // The wizard's new show opens in the editor, where "View Show" plays it.
    EnableCommand(window, "mnuSlideShowWizard", [window] {
        frmSlideWizard wizard(window);
        if (wizard.exec() == QDialog::Accepted)
            OpenSlideShowEditor(window);
    });
    EnableCommand(window, "mnuArrangeList", [window] { arrangeList(window); });
    // The editor's own rename, with its refusals, for the show in memory.
    EnableCommand(window, "mnuRenameShow", [] { RenameCurrentShow(); });
    EnableCommand(window, "mnuDeleteSlideShow", [] { deleteSlideShow(); });
}

} // namespace kavori
