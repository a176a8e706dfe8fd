#pragma once

#include <QAction>
#include <QObject>
#include <QString>
#include <QWidget>

#include <utility>

namespace kavori {

// A window's commands start disabled and come alive as their features are built: this finds
// the command (an action named name among the window's children), enables it and runs slot
// whenever it is chosen. Nothing happens when the window has no such command.
template <typename Slot> void EnableCommand(QWidget* window, const char* name, Slot&& slot)
{
    auto* action = window->findChild<QAction*>(QString::fromLatin1(name));
    if (!action)
        return;
    action->setEnabled(true);
    QObject::connect(action, &QAction::triggered, window, std::forward<Slot>(slot));
}

} // namespace kavori
