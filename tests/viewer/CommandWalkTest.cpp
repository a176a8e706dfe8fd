#include "platform/StartupState.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QIcon>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QToolBar>

using namespace kavori;

class CommandWalkTest : public kavori::test::KavoriTest {
protected:
    // Every command of the menus (submenus included) and every toolbar button, in order.
    static QList<QAction*> walk(MainViewFrm& window)
    {
        QList<QAction*> all;
        std::function<void(QMenu*)> menu = [&](QMenu* m) {
            for (QAction* a : m->actions()) {
                if (a->isSeparator())
                    continue;
                if (a->menu())
                    menu(a->menu());
                else
                    all << a;
            }
        };
        for (QAction* top : window.menuBar()->actions())
            if (top->menu())
                menu(top->menu());
        for (QToolBar* bar : window.findChildren<QToolBar*>())
            for (QAction* a : bar->actions())
                if (!a->isSeparator())
                    all << a;
        return all;
    }
    // The most opaque pixel of a picture (a point of its drawing).
    static QPoint inkAt(const QImage& image)
    {
        QPoint best;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (qAlpha(image.pixel(x, y)) > qAlpha(image.pixel(best)))
                    best = QPoint(x, y);
        return best;
    }
};

// A new user's first look: which commands are greyed out. Only those whose state says so may
// be: every command of the window is built.
TEST_F(CommandWalkTest, OnlyStateDependentAndUnbuiltCommandsAreDisabled)
{
    MainViewFrm window;
    QStringList disabled;
    QStringList noIcon;
    for (QAction* a : walk(window)) {
        if (!a->isVisible())
            continue; // empty recent-file and open-with slots are hidden, not greyed
        if (!a->isEnabled()) {
            disabled << a->objectName();
            // A greyed command's icon is visibly fainter than its normal one.
            const QImage off = a->icon().pixmap(16, 16, QIcon::Disabled).toImage();
            const QImage on = a->icon().pixmap(16, 16, QIcon::Normal).toImage();
            if (!off.isNull() && !on.isNull()) {
                const QPoint ink = inkAt(on);
                EXPECT_LT(qAlpha(off.pixel(ink)), qAlpha(on.pixel(ink)) / 2)
                    << a->objectName().toStdString();
            }
        }
        if (a->icon().isNull() || a->icon().pixmap(16, 16).isNull())
            noIcon << a->objectName();
    }
    const QStringList expected = {
        // State: nothing to undo yet.
        "mnuUndo",
        // State: a quick folder key does nothing until a folder is set for it.
        "mnuQuickCopy1", "mnuQuickCopy2", "mnuQuickCopy3", "mnuQuickCopy4", "mnuQuickCopy5",
        "mnuQuickCopy6", "mnuQuickCopy7", "mnuQuickCopy8", "mnuQuickCopy9", "mnuQuickCopy10",
        "mnuQuickCopy11", "mnuQuickCopy12", "mnuQuickMove1", "mnuQuickMove2", "mnuQuickMove3",
        "mnuQuickMove4", "mnuQuickMove5", "mnuQuickMove6", "mnuQuickMove7", "mnuQuickMove8",
        "mnuQuickMove9", "mnuQuickMove10", "mnuQuickMove11", "mnuQuickMove12"};
    QStringList sortedExpected = expected;
    sortedExpected.sort();
    disabled.sort();
    EXPECT_EQ(disabled, sortedExpected);
    EXPECT_EQ(noIcon, QStringList());
}
