#include "EditorCommands.h"

#include "SlideLoadFrm.h"
#include "frmPlaybackOptions.h"
#include "frmSlideWizard.h"

#include <QAction>
#include <QWidget>

namespace kavori {

void ConnectEditorCommands(QWidget* window)
{
    if (auto* action = window->findChild<QAction*>(QStringLiteral("mnuSlideShow"))) {
        action->setEnabled(true);
        QObject::connect(action, &QAction::triggered, window,
                         [window] { OpenSlideShowEditor(window); });
    }
    if (auto* action = window->findChild<QAction*>(QStringLiteral("mnuDescOptions"))) {
        action->setEnabled(true);
        QObject::connect(action, &QAction::triggered, window, [window] {
            frmPlaybackOptions::Edit(window, frmPlaybackOptions::Descriptions);
        });
    }
    // The wizard's new show opens in the editor, where "View Show" plays it.
    if (auto* action = window->findChild<QAction*>(QStringLiteral("mnuSlideShowWizard"))) {
        action->setEnabled(true);
        QObject::connect(action, &QAction::triggered, window, [window] {
            frmSlideWizard wizard(window);
            if (wizard.exec() == QDialog::Accepted)
                OpenSlideShowEditor(window);
        });
    }
}

} // namespace kavori
