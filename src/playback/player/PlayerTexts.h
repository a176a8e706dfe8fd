#pragma once

#include <QString>

class QFontMetrics;

namespace kavori {

// The texts the player shows.

// The file-name and description line of a slide; empty when neither is to be shown.
QString SlideInfoLine(const QString& file, const QString& description, bool showFileNames,
                      bool showDescription);
// The line cut to fit width, ending in "..." when cut.
QString FitInfoLine(const QString& line, const QFontMetrics& metrics, int width);

// Which slide of the show is up: "Slide 3 of " and the count text of the show's slides.
QString SlidePositionText(int index, int count);

// The Delete key's question, and its refusal on the last slide.
QString RemoveSlideQuestion(const QString& file);
QString LastSlideRefusal();

// The pause button's hint in the player's toolbar.
QString PauseHint(bool paused);

QString LoadingNextSlideText();
QString UnableToViewSlideText(const QString& file);

} // namespace kavori
