#include "EditorCommands.h"

#include "SlideLoadFrm.h"

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
}

} // namespace kavori
