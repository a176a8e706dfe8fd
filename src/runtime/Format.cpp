#include "Format.h"

#include <algorithm>
#include <cmath>

namespace kavori {

namespace {

struct Pattern {
    int minWholeDigits = 0;
    int decimals = 0;
    bool grouping = false;
};

Pattern parsePattern(const QString& pattern)
{
    Pattern p;
    const qsizetype dot = pattern.indexOf(u'.');
    const QString whole = dot < 0 ? pattern : pattern.left(dot);
    p.grouping = whole.contains(u',');
    p.minWholeDigits = int(whole.count(u'0'));
    if (dot >= 0)
        p.decimals = int(pattern.size() - dot - 1);
    return p;
}

QString group(const QString& digits)
{
    QString out;
    const qsizetype n = digits.size();
    for (qsizetype i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0)
            out += u',';
        out += digits[i];
    }
    return out;
}

// Formats a non-negative number given as its whole digits and its decimal digits.
QString assemble(QString whole, const QString& fraction, const Pattern& p)
{
    qsizetype zeros = 0;
    while (zeros < whole.size() && whole[zeros] == u'0')
        ++zeros;
    whole.remove(0, zeros);
    while (whole.size() < p.minWholeDigits)
        whole.prepend(u'0');
    if (p.grouping)
        whole = group(whole);
    if (p.decimals == 0)
        return whole;
    return whole + u'.' + fraction;
}

} // namespace

QString Format(qint64 value, const QString& pattern)
{
    const Pattern p = parsePattern(pattern);
    const bool negative = value < 0;
    const quint64 magnitude = negative ? quint64(0) - quint64(value) : quint64(value);
    QString text = assemble(QString::number(magnitude), QString(p.decimals, u'0'), p);
    if (negative && magnitude != 0)
        text.prepend(u'-');
    return text;
}

QString Format(double value, const QString& pattern)
{
    if (!std::isfinite(value))
        return QString::number(value);
    const Pattern p = parsePattern(pattern);
    const bool negative = value < 0;
    // Round half away from zero at the pattern's precision, on the decimal text so that
    // 0.05 formats as ".1" and not as the binary neighbour below it.
    const QString exact = QString::number(std::fabs(value), 'f', p.decimals + 6);
    const qsizetype dot = exact.indexOf(u'.');
    QString digits = exact.left(dot) + exact.mid(dot + 1, p.decimals);
    const bool roundUp = exact[dot + 1 + p.decimals] >= u'5';
    if (roundUp) {
        qsizetype i = digits.size() - 1;
        while (i >= 0 && digits[i] == u'9') {
            digits[i] = u'0';
            --i;
        }
        if (i < 0)
            digits.prepend(u'1');
        else
            digits[i] = QChar(digits[i].unicode() + 1);
    }
    const QString whole = digits.left(digits.size() - p.decimals);
    const QString fraction = digits.right(p.decimals);
    QString text = assemble(whole.isEmpty() ? QStringLiteral("0") : whole, fraction, p);
    const bool isZero =
        std::all_of(digits.cbegin(), digits.cend(), [](QChar c) { return c == u'0'; });
    if (negative && !isZero)
        text.prepend(u'-');
    return text;
}

double BytesToMegabytes(qint64 bytes)
{
    return double(bytes) / 1000000.0;
}

} // namespace kavori
