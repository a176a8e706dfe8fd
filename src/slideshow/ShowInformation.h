#pragma once

#include "SlideShow.h"

#include <QString>
#include <QStringList>

namespace kavori {

// What the slide show information dialog says about a show, line by line.
struct ShowInformation {
    QString fileSize; // "1,234 bytes", "(File size is unknown.)" or "(Slide show has not been saved
                      // yet.)"
    QString slides;   // the count line of the show
    QString missing;  // empty, "(One slide is missing.)" or "(n slides are missing.)"
    QString sound;    // "No sound file specified.", "CD Audio has been specified." or a count
    QString textures; // "n texture file(s) specified." and the missing ones
    QString totalTime; // "###,###.0 seconds  (m minutes)" or "Time interval not specified."
};

ShowInformation DescribeShow(const SlideShow& show);

// The show files of a folder, by name.
QStringList ShowFilesIn(const QString& folder);

// What the load dialog tells about a show file before it is opened.
struct ShowFileDetails {
    QString size; // "1,234 bytes" or "Unknown..."
    QString info; // its notes, "Open slide show to edit comments." or "(Open file to edit...)"
};
ShowFileDetails DescribeShowFile(const QString& path);

// The source folder information: the folder, the valid files, the chosen ones and their size.
QString SourceFolderInformation(const QString& folder, int validFiles, int selectedFiles,
                                qint64 totalBytes);

} // namespace kavori
