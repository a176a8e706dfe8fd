#pragma once

#include <QByteArray>

namespace kavori::test {

// A mono 16-bit PCM wave file of the given length: a sine tone of hertz, or silence for 0.
QByteArray MakeWave(int milliseconds, int rate = 8000, double hertz = 0);

} // namespace kavori::test
