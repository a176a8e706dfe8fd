#pragma once

#include <QByteArray>
#include <QImage>

namespace kavori {

// ZSoft PCX: 1, 2, 4 and 8 bits per pixel, planar and packed, 24-bit as three planes, the
// run-length scheme, and the 256-colour palette at the end. Damaged or truncated data gives a
// null picture; nothing is read outside the data.
QImage DecodePcx(const QByteArray& data);

} // namespace kavori
