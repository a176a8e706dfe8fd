#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// The one in-memory store of the program's own INI files (KAVORI.INI, RUN-KAV.INI, a package's
// SETUP.INI). It holds one file at a time, in a strict load, get/set, save sequence:
// every caller loads the file again before its reads or writes.
//
// Lines are kept trimmed, never empty, at most 500 characters, and at most 1,001 of them.
// Sections and keys match case-sensitively; "key=" must follow the key directly; lines that
// start with ";" are comments. Reading goes through the list-input reader, so a comma splits
// a line in two: a value holding a comma does not survive a load, as in every earlier release.

constexpr int kIniMaxLineLength = 500;
constexpr int kIniMaxLines = 1001;

// Fills the store from a file; a missing or unreadable file leaves it empty.
void LoadIniFile(const QString& path);
// The value of key in [section], or an empty string.
QString GetIniValue(const QString& section, const QString& key);
// Changes the key's line, or adds it as the last line of its section (the section is appended
// when missing). A full store ignores writes.
void SetIniValue(const QString& section, const QString& key, const QString& value);
// Writes every line with CR LF, a blank line before each section header but the first, then
// empties the store. The old file stays whole when the new one cannot be written (false).
bool SaveIniFile(const QString& path);
void ClearIni();

// Sets one key in a file the program does not own (SYSTEM.INI), by the system's profile-string
// rules rather than the store's: the section and key are found without regard to case, every
// other line stays byte for byte, a missing key is added after its section's last line and a
// missing section at the end of the file. The store itself is not touched. The file is
// replaced whole or not at all; false when it cannot be written.
bool WriteProfileString(const QString& path, const QString& section, const QString& key,
                        const QString& value);

// What the store holds, for tests and diagnostics.
const QStringList& IniLines();
int IniLineCount();

} // namespace kavori
