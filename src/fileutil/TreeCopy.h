#pragma once

#include <QString>

namespace kavori {

class Progress;

// Copies every file and folder below source into target (made as needed), hidden ones too,
// each file whole or not at all, with progress and Cancel. Files already copied stay when it
// stops; a file of the same name in target is replaced.
struct TreeCopyOutcome {
    enum class Result { Done, Cancelled, Failed } result = Result::Done;
    int files = 0;   // files copied
    QString problem; // the file that could not be copied
};
TreeCopyOutcome CopyFolderTree(const QString& source, const QString& target, Progress& progress);

// Why a tree may not be copied there: target inside source (it would copy itself without end).
// Empty when it may.
QString TreeCopyRefusal(const QString& source, const QString& target);

} // namespace kavori
