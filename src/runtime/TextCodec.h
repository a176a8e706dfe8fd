#pragma once

#include <QByteArray>
#include <QString>

namespace kavori {

// The program's own text files are written as UTF-8. Older files written on a single-byte
// code page still read: bytes that are not valid UTF-8 are taken as Windows-1252 / Latin-1.
QString DecodeText(const QByteArray& bytes);
QByteArray EncodeText(const QString& text);

} // namespace kavori
