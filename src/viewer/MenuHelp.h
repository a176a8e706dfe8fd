#pragma once

class QMenuBar;

namespace kavori {

// F1 on a highlighted menu entry opens that command's topic of the manual (the entry's
// object name is its topic); elsewhere F1 stays the Help menu's Contents.
void InstallMenuHelp(QMenuBar* bar);

} // namespace kavori
