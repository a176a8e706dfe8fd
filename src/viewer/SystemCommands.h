#pragma once

#include <QDialog>

class QTreeWidget;

namespace kavori {

class MainViewFrm;

// The System menu's tools: System Information (our own dialog), Multimedia Properties and
// Advanced Settings (the desktop's sound and system settings), the Media Player, the help
// page about the program, and Exit to Launcher.
void ConnectSystemCommands(MainViewFrm* window);

// The values of GatherSystemInformation in a two-column list, with a button that copies them
// as text for a bug report.
class frmSysInfo : public QDialog {
    Q_OBJECT
public:
    explicit frmSysInfo(QWidget* parent = nullptr);
    QTreeWidget* list() const { return m_list; }
    // The lines as "label: value", one a line (what Copy puts on the clipboard).
    QString text() const;

private:
    QTreeWidget* m_list = nullptr;
};

} // namespace kavori
