#pragma once

#include <QtGlobal>

namespace kavori {

// Window positions and sizes are kept in twips, 15 to a pixel at the usual 96 dots per inch.
constexpr int kTwipsPerPixel = 15;

constexpr qint32 PixelsToTwips(int pixels)
{
    return qint32(pixels) * kTwipsPerPixel;
}

constexpr int TwipsToPixels(qint32 twips)
{
    return int(twips / kTwipsPerPixel);
}

} // namespace kavori
