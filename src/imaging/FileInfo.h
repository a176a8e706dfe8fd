#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// What the information display shows for a file: a refusal, or a caption and its lines.
struct FileInfoResult {
    QString refusal;   // set when nothing can be shown
    QString caption;   // "Image Information", "Sound Information" or "Movie Information"
    QStringList lines; // name, size, type
};

// fromDialog: asked from a dialog with a file field, which has its own "not specified" text.
FileInfoResult FileInformation(const QString& path, bool fromDialog = false);

// Shows the information (or the refusal) in a message box.
void ShowFileInfo(const QString& path, bool fromDialog = false);

} // namespace kavori
