#include "Screenshot.h"

#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace kavori {

void ScreenshotFirstWindowIfAsked()
{
    const QString target = qEnvironmentVariable("KAVORI_SCREENSHOT");
    if (target.isEmpty())
        return;
    auto* poll = new QTimer(qApp);
    poll->setInterval(250);
    auto waited = std::make_shared<int>(0);
    QObject::connect(poll, &QTimer::timeout, qApp, [poll, target, waited] {
        QWidget* window = QApplication::activeModalWidget();
        if (!window) {
            for (QWidget* w : QApplication::topLevelWidgets()) {
                if (w->isVisible() && w->objectName() != QLatin1String("WaitFrm")) {
                    window = w;
                    break;
                }
            }
        }
        // Give the window a second to settle after it appears (start timers, first paint).
        if (!window || ++*waited < 4)
            return;
        poll->stop();
        // With $KAVORI_SCREENSHOT_MENU naming a menu, that menu is opened and the whole
        // screen is taken, so the menu shows beside its window.
        const QString menuName = qEnvironmentVariable("KAVORI_SCREENSHOT_MENU");
        if (auto* menu = window->findChild<QMenu*>(menuName); menu && !menuName.isEmpty()) {
            menu->popup(window->mapToGlobal(QPoint(10, 30)));
            QTest::qWait(400);
            const bool saved = window->screen()->grabWindow(0).save(target, "PNG");
            std::fprintf(stderr, "%s %s\n", saved ? "Screenshot saved to" : "Could not save",
                         qPrintable(target));
            std::fflush(stderr);
            std::_Exit(saved ? 0 : 1);
        }
        const bool saved = window->grab().save(target, "PNG");
        std::fprintf(stderr, "%s %s\n", saved ? "Screenshot saved to" : "Could not save",
                     qPrintable(target));
        // The window may be a modal question inside start-up: leave at once, whatever runs.
        std::fflush(stderr);
        std::_Exit(saved ? 0 : 1);
    });
    poll->start();
}

} // namespace kavori
