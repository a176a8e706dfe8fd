#pragma once

class QWidget;

namespace kavori {

// Connects the main window's screen saver commands (mnuSetScreenSaver, mnuSSaverSettings).
void ConnectSaverCommands(QWidget* window);

// "Set as Screen Saver...": a show picked (the one open, when it has a file, is offered first)
// becomes the screen saver at once; the settings dialog then shows it.
void SetShowAsScreenSaver(QWidget* parent);

} // namespace kavori
