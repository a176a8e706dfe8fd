#pragma once

#include <QStringList>

#include <optional>

namespace kavori {

// Start-up: reads the command line, loads languages, settings and the bonus pack, checks the
// display and the program's registration, and starts one mode. Returns the exit code when the
// process is to end now; no value when a window has taken over and the event loop should run.
std::optional<int> RunEntryRoutine(const QStringList& arguments);

} // namespace kavori
