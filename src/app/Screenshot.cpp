#include "Screenshot.h"

#include "playback/FullViewFrm.h"

#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <algorithm>
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

void ScreenshotShowIfAsked()
{
    const QString folder = qEnvironmentVariable("KAVORI_SCREENSHOT_SHOW");
    if (folder.isEmpty())
        return;
    struct State {
        int shown = -1;          // the slide last seen finished
        qint64 settled = 0;      // polls since then
        qint64 inTransition = 0; // polls since the transition began
        int saved = 0;
    };
    auto state = std::make_shared<State>();
    auto* poll = new QTimer(qApp);
    poll->setInterval(50);
    auto save = [folder](QWidget* window, const char* name) {
        const QString path = folder + QStringLiteral("/") + QString::fromLatin1(name);
        // Taken from the screen, as the user sees it.
        QPixmap shot = window->screen()->grabWindow(window->winId());
        if (shot.isNull())
            shot = window->grab();
        const bool saved = shot.save(path, "PNG");
        std::fprintf(stderr, "%s %s\n", saved ? "Screenshot saved to" : "Could not save",
                     qPrintable(path));
    };
    // $KAVORI_SCREENSHOT_SLIDES asks for more slides than two.
    const int slides = std::max(2, qEnvironmentVariableIntValue("KAVORI_SCREENSHOT_SLIDES"));
    QObject::connect(poll, &QTimer::timeout, qApp, [poll, state, save, slides] {
        FullViewFrm* player = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* p = qobject_cast<FullViewFrm*>(w); p && p->isVisible() && p->isPlaying())
                player = p;
        if (!player)
            return;
        if (player->isInTransition()) {
            // Some way into the effect, when both pictures share the screen.
            if (state->saved == 1 && ++state->inTransition == 8) {
                save(player, "transition.png");
                state->saved = 2;
            }
            return;
        }
        state->inTransition = 0;
        if (player->isLoading() || player->currentSlide() < 0)
            return;
        if (player->currentSlide() != state->shown) {
            state->shown = player->currentSlide();
            state->settled = 0;
            return;
        }
        // A second on the slide lets its description settle.
        if (++state->settled != 20)
            return;
        if (state->saved == 1)
            state->saved = 2; // the slide came without a transition to photograph
        if (state->saved == 0) {
            save(player, "slide-1.png");
            state->saved = 1;
            // Stepped from the event loop rather than from inside this poll, so the poll runs
            // again while the transition plays and can photograph it.
            QTimer::singleShot(0, player, [player] { player->runAction(PlayerAction::Next); });
        } else if (state->saved >= 2) {
            const int slide = state->saved;
            save(player, QStringLiteral("slide-%1.png").arg(slide).toLatin1().constData());
            if (slide >= slides) {
                poll->stop();
                std::fflush(stderr);
                std::_Exit(0);
            }
            ++state->saved;
            player->runAction(PlayerAction::Next);
        }
    });
    poll->start();
}

} // namespace kavori
