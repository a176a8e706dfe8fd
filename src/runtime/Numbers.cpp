#include "Numbers.h"

#include <cfenv>
#include <cmath>
#include <limits>

namespace kavori {

qint64 RoundHalfEven(double value)
{
    const double r = std::nearbyint(value); // the default mode rounds halves to even
    if (r >= double(std::numeric_limits<qint64>::max()))
        return std::numeric_limits<qint64>::max();
    if (r <= double(std::numeric_limits<qint64>::min()))
        return std::numeric_limits<qint64>::min();
    return qint64(r);
}

double Int(double value)
{
    return std::floor(value);
}

std::optional<double> ParseNumber(const QString& text)
{
    const QString t = text.trimmed();
    if (t.isEmpty())
        return std::nullopt;
    if (t.startsWith(QLatin1String("&H"), Qt::CaseInsensitive)) {
        bool ok = false;
        const qint64 v = t.mid(2).toLongLong(&ok, 16);
        if (!ok)
            return std::nullopt;
        return double(v);
    }
    bool ok = false;
    const double v = t.toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return std::nullopt;
    return v;
}

namespace {
template <typename T> std::optional<T> toWhole(const QString& text)
{
    const std::optional<double> v = ParseNumber(text);
    if (!v)
        return std::nullopt;
    const double r = std::nearbyint(*v);
    if (r < double(std::numeric_limits<T>::min()) || r > double(std::numeric_limits<T>::max()))
        return std::nullopt;
    return T(r);
}
} // namespace

std::optional<qint16> ToInt16(const QString& text)
{
    return toWhole<qint16>(text);
}

std::optional<qint32> ToInt32(const QString& text)
{
    return toWhole<qint32>(text);
}

} // namespace kavori
