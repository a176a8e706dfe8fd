#pragma once

#include <QtGlobal>

namespace kavori {

// Milliseconds on a steady clock, for measuring intervals (start-up time, mouse timing).
qint64 GetTickCount();

} // namespace kavori
