#pragma once

#include "support/TestSounds.h"

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QVector>

namespace kavori::test {

// Every frame of a video file (or every step-th from the first), decoded to 32-bit RGB.
QVector<QImage> DecodeVideoFrames(const QString& path, int step = 1);

// What GStreamer's discoverer says of a file: the caps of its streams and its length.
struct Discovered {
    bool ok = false;
    QString videoCaps;
    QString audioCaps;
    qint64 duration = 0; // microseconds
    int width = 0;
    int height = 0;
    double frameRate = 0;
};
Discovered Discover(const QString& path);

// Peak signal-to-noise ratio of b against a over R, G and B, in dB (1000 when equal).
double Psnr(const QImage& a, const QImage& b);

} // namespace kavori::test
