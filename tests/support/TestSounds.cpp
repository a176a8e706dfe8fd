#include "TestSounds.h"

#include <QtEndian>

#include <cmath>

namespace kavori::test {

QByteArray MakeWave(int milliseconds, int rate, double hertz)
{
    const quint32 samples = quint32(qint64(rate) * milliseconds / 1000);
    QByteArray wave;
    const auto u32 = [&wave](quint32 v) {
        char b[4];
        qToLittleEndian(v, b);
        wave.append(b, 4);
    };
    const auto u16 = [&wave](quint16 v) {
        char b[2];
        qToLittleEndian(v, b);
        wave.append(b, 2);
    };
    wave.append("RIFF");
    u32(36 + samples * 2);
    wave.append("WAVEfmt ");
    u32(16);
    u16(1); // PCM
    u16(1); // mono
    u32(quint32(rate));
    u32(quint32(rate) * 2); // bytes per second
    u16(2);                 // block align
    u16(16);                // bits
    wave.append("data");
    u32(samples * 2);
    for (quint32 i = 0; i < samples; ++i)
        u16(quint16(qint16(std::lround(12000 * std::sin(2 * M_PI * hertz * i / rate)))));
    return wave;
}

} // namespace kavori::test
