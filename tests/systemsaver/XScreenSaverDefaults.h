#pragma once

#include <QByteArray>

namespace kavori::test {

// ~/.xscreensaver as a fresh install has it: the defaults packaged in the installed
// xscreensaver-settings program, laid out the way that program writes the file. Empty when
// XScreenSaver is not installed.
QByteArray FreshXScreenSaverFile();

} // namespace kavori::test
