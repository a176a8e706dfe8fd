#include "MenuHelp.h"

#include "platform/HelpFile.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

namespace kavori {

namespace {

class MenuHelpFilter : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* menu = qobject_cast<QMenu*>(watched);
        if (!menu ||
            (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
            return false;
        auto* key = static_cast<QKeyEvent*>(event);
        QAction* entry = menu->activeAction();
        if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier || !entry ||
            entry->menu() || entry->objectName().isEmpty())
            return false;
        // Claimed before the F1 shortcut of Contents can take it.
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            menu->close();
            ShowHelp(CommandHelpTopic(entry->objectName()));
        }
        return true;
    }
};

void watch(QMenu* menu, QObject* filter)
{
    menu->installEventFilter(filter);
    for (QAction* action : menu->actions())
        if (action->menu())
            watch(action->menu(), filter);
}

} // namespace

void InstallMenuHelp(QMenuBar* bar)
{
    auto* filter = new MenuHelpFilter(bar);
    for (QAction* top : bar->actions())
        if (top->menu())
            watch(top->menu(), filter);
}

} // namespace kavori
