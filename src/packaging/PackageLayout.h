#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

namespace kavori {

// What goes into a package folder and the small control files written there, window-free.

// The five options of a package.
struct PackageOptions {
    bool runtime = false;     // PackageRuntime: the run-time player only
    bool screenSaver = false; // PackageScreenSaver
    bool defaultSaver = true; // PackageDefaultSaver
    bool shortcut = false;    // PackageShortcut
    bool autorun = false;     // PackageAutorun
};

// Where the file that stands for a layout name is taken from.
enum class PackageFrom {
    Programs,         // the folder of the program's executables
    Home,             // the program's folder (AppPath)
    SupportLibraries, // the libraries and plug-ins the programs load, found from the programs
    Nothing,          // no counterpart on this system
};

// One name of the package layout and the file that stands for it here.
struct PackageFile {
    QString name; // the layout's name ("RUN-KAV.EXE")
    QString host; // our file, relative to where it comes from and to the package folder
    PackageFrom from = PackageFrom::Nothing;
    bool runtime = false;   // in a run-time package
    bool full = false;      // in a full package
    bool saverOnly = false; // in a run-time package only when it is a screen saver package
};

// The layout, in copy order.
const QVector<PackageFile>& PackageLayout();
// The files a package of these options copies, in order (support libraries included as their
// one row; files without a counterpart left out).
QVector<PackageFile> PackageFilesFor(const PackageOptions& options);
// The file standing for a layout name, or the name itself when the layout has no such name.
QString PackageHostName(const QString& name);

// The folders inside a package for the support libraries and Qt's plug-ins.
QString PackageLibraryFolder();
QString PackagePluginFolder();
// The names of the show folder and of the control files.
QString PackageSlidesFolder();
QStringList PackageControlFiles();
// Every file and folder the program puts into a package folder besides SLIDES (what deleting a
// package removes).
QStringList PackageKnownEntries();

// "screen saver" or "slide show", the word every message of a build uses.
QString PackageWord(bool screenSaver);

// The control files. Text files are CR LF lines.
QByteArray AutorunInfBytes(const PackageOptions& options);
// libraries: the package-relative names of the support libraries, in the order copied.
QByteArray SetupLstBytes(const QStringList& libraries);
QByteArray QtConfBytes();
// The INI files, through the program's INI writer; values from the current settings.
bool WriteRunKavIni(const QString& path);
bool WritePackageKavoriIni(const QString& path);
bool WritePackageSetupIni(const QString& path, const QString& showFile, const QString& name,
                          const QString& size, const PackageOptions& options);

} // namespace kavori
