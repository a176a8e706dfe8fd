#pragma once

#include <QString>

namespace kavori {

// What a file dropped on the image area asks for.
struct DropRequest {
    enum Kind { Refuse, OpenImage, PlayShow } kind = Refuse;
    QString path;    // the file to open or play (links followed)
    QString message; // the refusal
};

// Links (symbolic links and .desktop links) are followed; folders, PCX and TGA pictures and
// other files are refused with their messages.
DropRequest ClassifyDrop(const QString& dropped);

} // namespace kavori
