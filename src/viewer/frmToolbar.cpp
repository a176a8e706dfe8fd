#include "frmToolbar.h"

#include "MainViewFrm.h"
#include "platform/Twips.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QAction>
#include <QGridLayout>
#include <QScreen>
#include <QToolButton>

namespace kavori {

namespace {

constexpr qint32 kWidthTwips = 3210;
constexpr qint32 kHeightTwips = 1335;

} // namespace

QPoint FloatingToolbarPlace(qint32 toolbarX, qint32 toolbarY, const QSize& screen)
{
    const qint32 maxX = qMax<qint32>(0, PixelsToTwips(screen.width()) - kWidthTwips);
    const qint32 maxY = qMax<qint32>(0, PixelsToTwips(screen.height()) - kHeightTwips);
    return {TwipsToPixels(qBound<qint32>(0, toolbarX, maxX)),
            TwipsToPixels(qBound<qint32>(0, toolbarY, maxY))};
}

frmToolbar::frmToolbar(MainViewFrm* window) : QWidget(window, Qt::Tool)
{
    setObjectName(QStringLiteral("frmToolbar"));
    setWindowTitle(AppTitle());
    setAttribute(Qt::WA_DeleteOnClose);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(4, 4, 4, 4);
    grid->setSpacing(2);
    const char* const commands[] = {
        "mnuOpen",       "mnuBrowseFirst", "mnuBrowsePrevious",  "mnuBrowseNext",
        "mnuBrowseLast", "mnuFullScreen",  "mnuThumbnailBrowse", "mnuSlideShow"};
    int index = 0;
    for (const char* name : commands) {
        QAction* action = window->findChild<QAction*>(QString::fromLatin1(name));
        if (!action)
            continue;
        auto* button = new QToolButton(this);
        button->setObjectName(QStringLiteral("tb") + QString::fromLatin1(name).mid(3));
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonIconOnly);
        button->setIconSize(QSize(24, 24));
        button->setAutoRaise(true);
        button->setToolTip(action->text().remove(u'&'));
        grid->addWidget(button, index / 4, index % 4);
        ++index;
    }
    setFixedSize(TwipsToPixels(kWidthTwips), TwipsToPixels(kHeightTwips));
}

void frmToolbar::showAtSavedPlace()
{
    const QScreen* screen = parentWidget() ? parentWidget()->screen() : this->screen();
    const QRect area = screen ? screen->geometry() : QRect(0, 0, 1024, 768);
    const Settings& s = CurrentSettings();
    m_placing = true;
    move(area.topLeft() + FloatingToolbarPlace(s.ToolbarX, s.ToolbarY, area.size()));
    m_placing = false;
    show();
    raise();
}

void frmToolbar::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    if (m_placing || !isVisible())
        return;
    // Where the user put it, kept for the next start (written with the window's state).
    const QScreen* screen = this->screen();
    const QPoint origin = screen ? screen->geometry().topLeft() : QPoint();
    Settings& s = CurrentSettings();
    s.ToolbarX = PixelsToTwips(pos().x() - origin.x());
    s.ToolbarY = PixelsToTwips(pos().y() - origin.y());
}

} // namespace kavori
