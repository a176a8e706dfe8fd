#pragma once

class QWidget;

namespace kavori {

// Connects the main window's package commands (mnuPackage, mnuDeletePackage).
void ConnectPackageCommands(QWidget* window);

} // namespace kavori
