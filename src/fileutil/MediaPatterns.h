#pragma once

#include <QString>
#include <QStringList>

namespace kavori {

// The media types the file dialogs list and the duplicate finder looks for: pictures always,
// movies and sounds when asked. As the pattern text ("*.dib;*.bmp;...") and as upper-cased
// extensions with their dot.
QString DuplicatePattern(bool movies, bool sounds);
QStringList DuplicateExtensions(bool movies, bool sounds);

} // namespace kavori
