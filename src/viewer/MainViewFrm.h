#pragma once

#include <QMainWindow>

namespace kavori {

// The program's main window: one image at a time, and every command in its menus.
class MainViewFrm : public QMainWindow {
    Q_OBJECT
public:
    explicit MainViewFrm(QWidget* parent = nullptr);
};

} // namespace kavori
