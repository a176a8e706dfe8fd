#pragma once

class QWidget;

namespace kavori {

// Brings the main window's editor command to life: "Slide Show Editor" opens the editor on
// the show in memory. The action is found among the window's children by object name.
void ConnectEditorCommands(QWidget* window);

} // namespace kavori
