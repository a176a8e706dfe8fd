#pragma once

class QWidget;

namespace kavori {

// Brings the main window's editor commands to life: "Slide Show Editor" opens the editor on
// the show in memory, "Slide Show Wizard" makes a show and opens it there, the description
// options open the playback options on their descriptions page, "Arrange" opens the editor
// with its View List in front, and the show file can be renamed (as in the editor) or deleted.
// The actions are found among the window's children by object name.
void ConnectEditorCommands(QWidget* window);

} // namespace kavori
