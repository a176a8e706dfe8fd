#include "SystemCommands.h"

#include "MainViewFrm.h"
#include "platform/AppPaths.h"
#include "platform/DesktopPrograms.h"
#include "platform/HelpFile.h"
#include "platform/SystemInformation.h"
#include "playback/frmMediaPlayer.h"
#include "runtime/Commands.h"
#include "runtime/MsgBox.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kavori {

namespace {

// Starts one of the desktop's tools, or says which programs would do.
void openDesktopTool(const DesktopCandidates& candidates, const QString& what)
{
    if (StartDesktopProgram(candidates))
        return;
    MsgBox(QStringLiteral("No ") + what + QStringLiteral(" program was found on this system.") +
               NewLine2() + QStringLiteral("Install one of ") + DesktopProgramNames(candidates) +
               QStringLiteral(", or use your desktop's own settings..."),
           vbInformation);
}

} // namespace

frmSysInfo::frmSysInfo(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSysInfo"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [System Information]"));
    m_list = new QTreeWidget(this);
    m_list->setObjectName(QStringLiteral("lstInfo"));
    m_list->setColumnCount(2);
    m_list->setHeaderLabels({QStringLiteral("Item"), QStringLiteral("Value")});
    m_list->setRootIsDecorated(false);
    m_list->setWordWrap(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (const SystemInfoLine& line : GatherSystemInformation()) {
        auto* item = new QTreeWidgetItem(m_list, {line.label, line.value});
        item->setToolTip(1, line.value);
    }
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_list->header()->setStretchLastSection(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    auto* copy = buttons->addButton(QStringLiteral("&Copy"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("CmdCopy"));
    connect(copy, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(text()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
    resize(640, 340);
}

QString frmSysInfo::text() const
{
    QStringList lines;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = m_list->topLevelItem(i);
        lines << item->text(0) + QStringLiteral(": ") + item->text(1);
    }
    return lines.join(u'\n') + u'\n';
}

void ConnectSystemCommands(MainViewFrm* window)
{
    EnableCommand(window, "mnuSysInfo", [window] {
        frmSysInfo dialog(window);
        dialog.exec();
    });
    EnableCommand(window, "mnuMultimediaProperties", [] {
        openDesktopTool(SoundSettingsPrograms(), QStringLiteral("sound settings"));
    });
    EnableCommand(window, "mnuAdvancedSettings", [] {
        openDesktopTool(SystemSettingsPrograms(), QStringLiteral("system settings"));
    });
    EnableCommand(window, "mnuMediaPlayer", [window] {
        // One player window at a time; choosing the command again brings it forward.
        auto* player = window->findChild<frmMediaPlayer*>();
        if (!player) {
            player = new frmMediaPlayer(window);
            player->setAttribute(Qt::WA_DeleteOnClose);
        }
        player->show();
        player->raise();
        player->activateWindow();
        player->chooseFile();
    });
    EnableCommand(window, "mnuWebSite", [] { ShowHelp(QStringLiteral("about")); });
    // There is no launcher program to go back to on this system: the launcher return ends
    // Kavori exactly as Exit does (unsaved-picture question, settings written), which is what a
    // user coming back to the desktop expects.
    EnableCommand(window, "mnuExitToLauncher", [window] { window->close(); });
}

} // namespace kavori
