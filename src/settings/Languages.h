#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// The installed language versions, kept in "LangFile.DAT" in the program's folder: the
// selected index first (-1 for the built-in English), then one "file, label" record each.
constexpr int kMaxLanguages = 25;

struct LanguageState {
    qint16 LangCount = 0;
    qint16 LangCurrent = -1;
    QStringList LangFile; // program file of each language, relative to the program's folder
    QStringList LangName; // its label
};

LanguageState& CurrentLanguages();
QString LanguageFilePath();

// Reads the file; a missing or damaged one leaves the built-in default selected.
void LoadLanguages();
// Writes the state back. Records whose program file is missing are dropped, and the first
// of them is reported once.
void SaveLanguages();

} // namespace kavori
