#include "PlayerTexts.h"

#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "slideshow/SlideList.h"

#include <QFontMetrics>

namespace kavori {

QString SlideInfoLine(const QString& file, const QString& description, bool showFileNames,
                      bool showDescription)
{
    if (showFileNames) {
        if (!showDescription)
            return file;
        if (description.isEmpty())
            return file + QStringLiteral(" <--> No Description Available");
        return file + QStringLiteral(" <--> ") + description;
    }
    // A description of its own is drawn over the picture instead.
    if (showDescription && description.isEmpty())
        return QStringLiteral(">> No Description Available <<");
    return {};
}

QString FitInfoLine(const QString& line, const QFontMetrics& metrics, int width)
{
    if (metrics.horizontalAdvance(line) <= width)
        return line;
    const QString dots = QStringLiteral("...");
    int keep = line.size();
    // Binary search for the longest head that fits with the dots after it.
    int low = 0;
    int high = keep;
    while (low < high) {
        const int mid = (low + high + 1) / 2;
        if (metrics.horizontalAdvance(line.left(mid) + dots) <= width)
            low = mid;
        else
            high = mid - 1;
    }
    keep = low;
    return line.left(keep) + dots;
}

QString SlidePositionText(int index, int count)
{
    return QStringLiteral("Slide ") + Format(index + 1, QStringLiteral("###,##0")) +
           QStringLiteral(" of ") + SlideCountText(count);
}

QString RemoveSlideQuestion(const QString& file)
{
    return QStringLiteral("Remove the picture:") + NewLine2() + file + NewLine2() +
           QStringLiteral("...from the slide show?") + NewLine2() +
           QStringLiteral("(Note: Image file will NOT be deleted.)");
}

QString LastSlideRefusal()
{
    return QStringLiteral("You may not remove the last picture from the slide show...");
}

QString PauseHint(bool paused)
{
    return paused ? QStringLiteral("RESUME slide show.  (P Key)")
                  : QStringLiteral("PAUSE slide show.  (P Key)");
}

QString LoadingNextSlideText()
{
    return QStringLiteral(">> Loading Next Slide <<");
}

QString UnableToViewSlideText(const QString& file)
{
    return QStringLiteral("Unable to view slide:") + NewLine2() + file + NewLine2() +
           QStringLiteral("...");
}

} // namespace kavori
