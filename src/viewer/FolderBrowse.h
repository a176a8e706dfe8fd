#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace kavori {

// Stepping through the images of the current image's folder.
enum class BrowseStep { First, Previous, Next, Last };

struct BrowseResult {
    QString file;             // the image to open; empty when nothing is to be opened
    QString message;          // an information message to show instead
    bool onlyOneFile = false; // ask whether to use the open dialog instead
};

// The supported files of a folder in the order they are browsed: names compared naturally
// ("img2" before "img10") and without regard to case.
QStringList BrowseList(const QString& folder, const std::function<bool(const QString&)>& isImage);

// What a step from current does within list (full paths). The current file is found by its
// name without regard to case; one missing from the list starts from the first.
BrowseResult BrowseFolder(const QStringList& list, const QString& current, BrowseStep step);

QString OnlyOneFileQuestion();

} // namespace kavori
