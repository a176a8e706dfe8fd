#pragma once

#include <QPoint>
#include <QSize>
#include <QWidget>

namespace kavori {

class MainViewFrm;

// The place of the floating toolbar on a screen, in pixels, from ToolbarX and ToolbarY
// (twips): kept where the whole window (3210 x 1335 twips) stays on the screen.
QPoint FloatingToolbarPlace(qint32 toolbarX, qint32 toolbarY, const QSize& screen);

// The floating toolbar: a small tool window over the main window with the commands used most
// while looking through pictures. Its buttons are the main window's own commands, so they
// are greyed and named as those are. Where the user leaves it is kept in ToolbarX/ToolbarY.
class frmToolbar : public QWidget {
    Q_OBJECT
public:
    explicit frmToolbar(MainViewFrm* window);

    // Shows it where the settings say, on the main window's screen.
    void showAtSavedPlace();

protected:
    void moveEvent(QMoveEvent* event) override;

private:
    bool m_placing = false;
};

} // namespace kavori
