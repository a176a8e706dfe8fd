#pragma once

#include <QString>

namespace kavori {

// The program's folder, where KAVORI.INI, LangFile.DAT, BONUSPAK.DAT, Slides/ and Bonus/ live:
// $KAVORI_HOME when set, else the user data folder. Always ends in "/".
QString AppPath();

// Creates the program's folder on first use and fills it with what a fresh home holds
// (Slides/, Bonus/Textures/, Bonus/Sounds/, BLANK.WAV, the help pages). Existing files are
// never replaced. Returns false when the folder cannot be made.
bool EnsureAppHome();

// The system's temporary folder, ending in "/" (scratch images, the undo snapshot).
QString TempPath();

// The path separator the program writes, and a path with it appended when missing.
QString PathSeparator();
QString AddSlash(const QString& folder);

// A full path rather than a bare or relative name: this system's, or one written on Windows.
bool IsFullPath(const QString& path);
// A path from a Windows machine: a drive letter and ":", or a leading "\" (its root, or a network
// path).
bool IsWindowsFullPath(const QString& path);

// The folder part of a path, ending in its separator (empty for a bare name), and the file
// name part. Names written on Windows are split at "\".
QString FolderOf(const QString& path);
QString FileNameOf(const QString& path);

// True when the path ends in the extension (".JPEG", ".KAV", ...) compared without case.
bool HasExtension(const QString& path, const QString& extension);

// The system's short form of an existing file's path, empty when the file does not exist. This
// system has no 8.3 names: the short form is the canonical path (links resolved, "." and ".."
// gone), which names the file as uniquely and survives being stored in a configuration file.
QString ShortPathName(const QString& path);

// The names the program owns ("Slides", "SLIDES", "Bonus/Textures") are found without regard
// to case: each part of relative is matched against what exists under folder. Parts that do
// not exist are appended as given.
QString PathNoCase(const QString& folder, const QString& relative);
// The same for a full path, every part of it: settings that the program keeps upper-cased
// still find their files.
QString FullPathNoCase(const QString& path);

} // namespace kavori
