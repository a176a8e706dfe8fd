#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace kavori {

// The desktop's own tools (settings panels, the disk utility) are started, never imitated: each
// kind is a list of candidate command lines, most common desktop first, and the first whose
// program is on the PATH runs detached.

// Candidates as {program, arguments...}.
using DesktopCandidates = QList<QStringList>;

DesktopCandidates DisplaySettingsPrograms();
DesktopCandidates SoundSettingsPrograms();
DesktopCandidates SystemSettingsPrograms();
DesktopCandidates DiskUtilityPrograms();

// The first candidate whose program is found on the PATH, with the program as a full path;
// empty when none is.
QStringList FindDesktopProgram(const DesktopCandidates& candidates);

// Starts the first candidate found; false when none is on this system or it would not start.
bool StartDesktopProgram(const DesktopCandidates& candidates);

// The program names of a list, "a, b or c", for a message that says what to install.
QString DesktopProgramNames(const DesktopCandidates& candidates);

// Tests see what would start instead of starting it: the launcher gets the full program path
// and the arguments and says whether it started. An empty one starts programs for real.
using DesktopLauncher = std::function<bool(const QString&, const QStringList&)>;
void SetDesktopLauncher(DesktopLauncher launcher);

} // namespace kavori
