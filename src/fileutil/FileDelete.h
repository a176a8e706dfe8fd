#pragma once

#include <QString>

namespace kavori {

// The one way the program deletes a file. Nothing happens when the file does not exist. With
// confirm set the user is asked first (our own question, worded for the trash or for good).
// With UseRecycleBin on the file goes to the desktop's trash, otherwise it is removed. When
// it is gone, its description entry and any favourite-files entry naming it go too. Returns
// whether the file is gone.
bool DeleteOneFile(const QString& path, bool confirm);

// The question asked before deleting a file when confirmation is wanted.
QString DeleteFileQuestion(const QString& path, bool toTrash);

} // namespace kavori
