#include "EditorCommands.h"

#include "SlideLoadFrm.h"
#include "frmPlaybackOptions.h"
#include "frmSlideWizard.h"

#include "runtime/Commands.h"

namespace kavori {

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
}

} // namespace kavori
