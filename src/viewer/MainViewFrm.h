#pragma once

#include "MainMenus.h"

#include <QMainWindow>

class QLabel;
class QTimer;

namespace kavori {

// The program's main window: one image at a time, and every command in its menus.
class MainViewFrm : public QMainWindow {
    Q_OBJECT
public:
    explicit MainViewFrm(QWidget* parent = nullptr);

    const MainMenus& menus() const { return m_menus; }

    // Runs the one-shot start sequence now (the window runs it once it has appeared).
    void runStartSequence();

    // "Load Time: ..." for a start that took this many milliseconds.
    static QString LoadTimeMessage(qint64 milliseconds);

private:
    void connectCommands();

    MainMenus m_menus;
    QTimer* m_timerStart = nullptr;
    QLabel* m_statusText = nullptr;
};

} // namespace kavori
