#include "MainViewFrm.h"

#include "platform/HelpFile.h"
#include "platform/TickCount.h"
#include "runtime/DoEvents.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "startup/StartupState.h"
#include "startup/WaitFrm.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTimer>

namespace kavori {

MainViewFrm::MainViewFrm(QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("MainViewFrm"));
    setWindowTitle(AppTitle());
    resize(634, 474); // the default 9510 x 7110 twips at 15 twips per pixel

    m_menus = BuildMainMenus(this);
    // Commands come alive as their features do; until then they are shown, never faked.
    for (QAction* action : std::as_const(m_menus.actions)) {
        if (!action->menu())
            action->setEnabled(false);
    }
    for (int i = 1; i <= 7; ++i)
        m_menus.action(QStringLiteral("mnuLast") + QString::number(i))->setVisible(false);
    for (const char* name : {"mnuOpenEditor", "mnuOpenEditor2", "mnuOpenEditor3", "mnuOpenEditor4",
                             "mnuOpenEditor5"})
        m_menus.action(QString::fromLatin1(name))->setVisible(false);
    connectCommands();

    m_statusText = new QLabel(this);
    m_statusText->setObjectName(QStringLiteral("lblStatus"));
    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    statusBar()->addWidget(m_statusText, 1);

    m_timerStart = new QTimer(this);
    m_timerStart->setObjectName(QStringLiteral("TimerStart"));
    m_timerStart->setSingleShot(true);
    m_timerStart->setInterval(0);
    connect(m_timerStart, &QTimer::timeout, this, &MainViewFrm::runStartSequence);
    m_timerStart->start();
}

void MainViewFrm::connectCommands()
{
    auto handle = [this](const char* name, auto&& slot) {
        QAction* action = m_menus.action(QString::fromLatin1(name));
        action->setEnabled(true);
        connect(action, &QAction::triggered, this, slot);
    };
    handle("mnuExit", [this] { close(); });
    handle("mnuHelpContents", [] { ShowHelp(); });
    handle("mnuHelpSearch", [] { ShowHelp(); });
}

QString MainViewFrm::LoadTimeMessage(qint64 milliseconds)
{
    return QStringLiteral("Load Time: ") + Format(milliseconds, QStringLiteral("###,###")) +
           QStringLiteral(" milliseconds...");
}

void MainViewFrm::runStartSequence()
{
    m_timerStart->stop();
    WaitFrm::CloseAll();
    DoEvents();
    const StartupState& start = CurrentStartup();
    if (start.LoadStart != -1)
        MsgBox(LoadTimeMessage(GetTickCount() - start.LoadStart), vbInformation);
}

} // namespace kavori
