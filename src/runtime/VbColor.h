#pragma once

#include <QColor>

namespace kavori {

// Colours in the settings and show files are stored as the run-time's RGB values:
// red + green x 256 + blue x 65536.
inline QColor FromVbColor(qint32 value)
{
    return QColor(value & 0xff, (value >> 8) & 0xff, (value >> 16) & 0xff);
}

inline qint32 ToVbColor(const QColor& c)
{
    return qint32(c.red()) | qint32(c.green()) << 8 | qint32(c.blue()) << 16;
}

} // namespace kavori
