#pragma once

#include <QtGlobal>

class QWidget;

namespace kavori {

// Command strings name windows by number ("window Movie handle 3"). A widget gets its number
// the first time it is asked for and keeps it; the number dies with the widget.
qint64 MediaWindowHandle(QWidget* widget);

// The widget with that number, or null when there is none (any more).
QWidget* MediaWindowFromHandle(qint64 handle);

} // namespace kavori
