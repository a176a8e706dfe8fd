#pragma once

#include <QByteArray>
#include <QImage>

namespace kavori {

// Windows icons and cursors: the largest picture of the file (the deeper one when two are
// equally large), PNG or DIB. Each picture is taken at its own size, so a directory entry
// that disagrees with its picture does not stop the file from opening. Null when no picture
// can be read.
QImage DecodeIcon(const QByteArray& data);

} // namespace kavori
