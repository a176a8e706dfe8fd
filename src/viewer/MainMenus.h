#pragma once

#include <QHash>
#include <QString>

class QAction;
class QMainWindow;
class QToolBar;

namespace kavori {

// The main window's menus and toolbars, built from one table. Every action carries its
// object name; the window connects the ones it handles and leaves the rest disabled until the
// feature behind them exists.
struct MainMenus {
    QHash<QString, QAction*> actions; // by object name
    QToolBar* mainToolbar = nullptr;  // Toolbar1
    QToolBar* quickToolbar = nullptr; // Toolbar2
    QHash<QString, QAction*> buttons; // toolbar buttons by key ("Open", "tNext", "F1", ...)

    QAction* action(const QString& name) const { return actions.value(name); }
};

MainMenus BuildMainMenus(QMainWindow* window);

// Icons come from the freedesktop icon theme by name: the desktop's theme when there is one,
// Breeze (installed with the program) where it has no icon or there is no desktop at all.
void UseIconTheme();
// The icon name of a command (an action's object name); empty for a name not in the table.
QString CommandIconName(const QString& command);
// Gives every command and toolbar button of the window its icon from the table, once all of
// them exist (subsystems add some of their own).
void ApplyCommandIcons(QMainWindow* window);

// The object names of all menu commands, in menu order.
QStringList MainMenuActionNames();

// The toolbar keys, in order.
QStringList MainToolbarKeys();
QStringList QuickToolbarKeys();

} // namespace kavori
