#pragma once

#include <QString>

namespace kavori {

// What the command line asks of the main window when it is a word rather than an image.
struct StartRequestResult {
    qint16 request = 0;      // 0 none, 1 about box, 2 slide show editor, 3 open-image dialog,
                             // 4 thumbnail browser, 5 language dialog
    QString thumbnailFolder; // with request 4
    QString message;         // a message to show first (help hint, invalid command)
    bool endProgram = false; // after the help hint
};

StartRequestResult ParseStartRequest(const QString& commandLine);

} // namespace kavori
