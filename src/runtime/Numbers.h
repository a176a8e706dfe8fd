#pragma once

#include <QString>

#include <optional>

namespace kavori {

// Whole-number conversion of a real, as the run-time does it: halves go to the even neighbour
// (2.5 -> 2, 3.5 -> 4, -2.5 -> -2).
qint64 RoundHalfEven(double value);

// Int(): the largest whole number not above the value (Int(-1.5) = -2).
double Int(double value);

// Text to number as the run-time's conversions read it: surrounding blanks allowed, a decimal
// or "&H" hexadecimal number; anything else is no number.
std::optional<double> ParseNumber(const QString& text);

// Text to a 16-bit / 32-bit signed whole number, rounding halves to even. No value when the
// text is not a number or the number does not fit (the run-time's overflow error).
std::optional<qint16> ToInt16(const QString& text);
std::optional<qint32> ToInt32(const QString& text);

// The numeric value of a Boolean in memory: -1 for true, 0 for false.
constexpr qint16 BoolValue(bool b)
{
    return b ? -1 : 0;
}

} // namespace kavori
