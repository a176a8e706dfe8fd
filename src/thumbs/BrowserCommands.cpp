#include "BrowserCommands.h"

#include "frmFileBrowser.h"
#include "platform/Twips.h"
#include "runtime/Commands.h"
#include "settings/Settings.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QDockWidget>
#include <QEvent>
#include <QTimer>

namespace kavori {

namespace {

// The pane's width when the settings have none.
constexpr int kDefaultWidthTwips = 3600;

// Keeps the pane's geometry in the settings just before the window writes them on closing.
class PaneKeeper : public QObject {
public:
    PaneKeeper(QDockWidget* dock, frmFileBrowser* pane) : QObject(dock), m_dock(dock), m_pane(pane)
    {}
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Close) {
            Settings& s = CurrentSettings();
            if (m_dock->isVisible()) {
                s.FileBrowserWidth = PixelsToTwips(m_dock->width());
                s.FileBrowserBar = m_pane->barTwips();
            }
        }
        return false;
    }

private:
    QDockWidget* m_dock;
    frmFileBrowser* m_pane;
};

} // namespace

void ConnectBrowserCommands(MainViewFrm* window)
{
    auto* dock = new QDockWidget(window);
    dock->setObjectName(QStringLiteral("dockFileBrowser"));
    dock->setWindowTitle(QStringLiteral("File Browser"));
    // The command shows and hides the pane; it is not torn off or closed on its own.
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setTitleBarWidget(new QWidget(dock));
    auto* pane = new frmFileBrowser(window);
    dock->setWidget(pane);
    window->addDockWidget(Qt::LeftDockWidgetArea, dock);
    const Settings& s = CurrentSettings();
    const int width =
        TwipsToPixels(s.FileBrowserWidth < 0 ? kDefaultWidthTwips : s.FileBrowserWidth);
    window->resizeDocks({dock}, {width}, Qt::Horizontal);
    dock->setVisible(s.ShowFileBrowser);
    const int bar = s.FileBrowserBar;
    // The divider is placed once the pane has its height.
    QTimer::singleShot(0, pane, [pane, bar] { pane->setBarTwips(bar); });
    window->installEventFilter(new PaneKeeper(dock, pane));
    // While the pane is shown its list follows the picture in the window, so the pane opened
    // beside a picture starts in that picture's folder.
    QObject::connect(window, &MainViewFrm::currentFileChanged, pane,
                     [dock, pane](const QString& path) {
                         if (!dock->isHidden())
                             pane->showFile(path);
                     });

    QAction* command = window->menus().action(QStringLiteral("mnuFileBrowser"));
    if (!command)
        return;
    command->setCheckable(true);
    command->setChecked(s.ShowFileBrowser);
    EnableCommand(window, "mnuFileBrowser", [window, dock, pane, command] {
        Settings& settings = CurrentSettings();
        if (dock->isVisible()) {
            settings.FileBrowserWidth = PixelsToTwips(dock->width());
            settings.FileBrowserBar = pane->barTwips();
        }
        settings.ShowFileBrowser = !dock->isVisible();
        dock->setVisible(settings.ShowFileBrowser);
        command->setChecked(settings.ShowFileBrowser);
        if (settings.ShowFileBrowser) {
            const qint32 twips =
                settings.FileBrowserWidth < 0 ? kDefaultWidthTwips : settings.FileBrowserWidth;
            window->resizeDocks({dock}, {TwipsToPixels(twips)}, Qt::Horizontal);
            pane->showFile(window->document().currentFile());
        }
    });
}

} // namespace kavori
