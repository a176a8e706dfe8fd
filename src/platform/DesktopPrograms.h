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

// Runs a command of the desktop's own tools to its end (settings writers such as gsettings or
// xfconf-query) and gives what it printed; true when it ran and exited with 0. The program is
// looked up on the PATH; a command whose program is not there fails.
bool RunDesktopCommand(const QStringList& command, QString* output = nullptr);

// Tests see what would run instead of running it. The runner gets the full program path, the
// arguments and, for a command run to its end, where its output goes (null for a detached
// start); it says whether the program started or succeeded. An empty one runs for real.
using DesktopRunner = std::function<bool(const QString&, const QStringList&, QString* output)>;
void SetDesktopRunner(DesktopRunner runner);
// The same for tests that only start programs.
using DesktopLauncher = std::function<bool(const QString&, const QStringList&)>;
void SetDesktopLauncher(DesktopLauncher launcher);

} // namespace kavori
