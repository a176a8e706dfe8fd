#pragma once

#include <QString>

namespace kavori {

// The display must show at least 256 colours. Returns false when the program must end.
// With exactly 256 colours the user may be asked (unless the command line starts a screen
// saver, or Color256Msg is off) whether to adjust the display after start; Cancel turns the
// question off for good.
bool CheckColorDepth(const QString& commandLine);

// Keeps the program's folder in the per-user store of "Kavorix" and notes the first run.
// Returns false when the user chose Cancel (the program ends).
bool CheckProgramPath();

// The message texts, kept beside the checks that show them.
QString ColorDepthTooLowMessage();
QString Colors256Question();
QString ProgramPathMissingMessage();
QString ProgramPathDifferentQuestion(const QString& appPath);

} // namespace kavori
