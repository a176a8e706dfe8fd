#pragma once

#include <QString>

namespace kavori {

// Number formatting with the run-time's patterns ("###,###", "###,##0", "###,###,##0",
// "###,##0.0", "###,###.0", "###,###,##0.0"): "#" is an optional digit, "0" a required one,
// a "," in the whole part groups thousands, the digits after "." are always shown.
// Halves round away from zero, as the run-time's Format does. Format(0, "###,###") is "".
QString Format(double value, const QString& pattern);
QString Format(qint64 value, const QString& pattern);
inline QString Format(int value, const QString& pattern)
{
    return Format(static_cast<qint64>(value), pattern);
}

// Sizes shown to the user are decimal megabytes.
double BytesToMegabytes(qint64 bytes);

} // namespace kavori
