#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// The run-time player of a package (run-kav): it lives in the package folder beside
// RUN-KAV.INI and plays the show in SLIDES, full screen, or as the screen saver when started
// with "/S" (XScreenSaver's "-window-id ID" or "-root" may follow).

// The show it plays: a ".KAV" named on the command line (beside the player when not a full
// path), else the first show in the package's SLIDES folder. Empty when there is none.
QString RuntimeShowPath(const QString& packageFolder, const QStringList& arguments);

// Reads RUN-KAV.INI and plays the show; the process's exit code.
int RunPackagedShow(const QString& packageFolder, const QStringList& arguments);

} // namespace kavori
