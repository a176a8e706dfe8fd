#include "StartRequest.h"

namespace kavori {

StartRequestResult ParseStartRequest(const QString& commandLine)
{
    StartRequestResult r;
    const QString word = commandLine.toUpper();
    if (word.isEmpty())
        return r;
    if (word == QLatin1String("?") || word == QLatin1String("HELP") || word == QLatin1String("H")) {
        r.message =
            QStringLiteral("Start the program normally (don't pass command line parameters) "
                           "and press the F1 key to view help on this product...");
        r.endProgram = true;
    } else if (word == QLatin1String("ABOUT") || word == QLatin1String("A")) {
        r.request = 1;
    } else if (word == QLatin1String("SHOW") || word == QLatin1String("S") ||
               word == QLatin1String("SLIDE") || word == QLatin1String("SLIDE SHOW") ||
               word == QLatin1String("SLIDES")) {
        r.request = 2;
    } else if (word == QLatin1String("OPEN") || word == QLatin1String("O")) {
        r.request = 3;
    } else if (word.left(9) == QLatin1String("THUMBNAIL")) {
        r.request = 4;
        r.thumbnailFolder = commandLine.mid(9).trimmed();
    } else if (word.left(8) == QLatin1String("LANGUAGE")) {
        r.request = 5;
    } else {
        r.message = QStringLiteral("An invalid command (") + commandLine +
                    QStringLiteral(") was passed at the command prompt...");
    }
    return r;
}

} // namespace kavori
