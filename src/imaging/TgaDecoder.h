#pragma once

#include <QByteArray>
#include <QImage>

namespace kavori {

// Truevision TGA: colour-mapped, true-colour and grey pictures, raw or run-length encoded,
// with either origin. Damaged or truncated data gives a null picture; nothing is read outside
// the data.
QImage DecodeTga(const QByteArray& data);

} // namespace kavori
