#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// The shared libraries a program needs on this system, found from the files themselves (the
// system's loader lists them), so a package carries what its programs link and nothing by hand.

// Every library the executables and plug-ins load, as full paths, each once, in the order
// found. The C library's own family and the graphics driver libraries stay out: they belong
// to the machine a package runs on. A file that is not a dynamic program adds nothing.
QStringList SharedLibraryDependencies(const QStringList& files);

// Whether the loader's list of a library leaves it to the system (see above).
bool IsSystemOwnedLibrary(const QString& fileName);

// Reads the loader's listing ("name => path (address)" lines) into paths.
QStringList ParseLoaderListing(const QString& listing);

// Qt's plug-ins a player needs, as paths relative to Qt's plug-in folder: the X11 and
// off-screen platforms, image formats, icon engines and the media back end.
QStringList PlayerPluginFiles();
// Qt's plug-in folder on this system, ending in "/".
QString QtPluginFolder();

} // namespace kavori
