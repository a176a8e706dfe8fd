#pragma once

#include <QByteArray>
#include <QImage>

#include <cstddef>
#include <cstdint>

namespace kavori {

// Decodes a baseline or progressive JPEG (grey, or YCbCr at 4:4:4, 4:2:2 or 4:2:0) at its full
// size on every core: the entropy-coded data in pieces side by side (as DecodeJpegScan does;
// a progressive file's scans side by side as DecodeProgressiveJpeg does), then the inverse
// DCT, the chroma upsampling and the colour conversion by rows. The pixels are those
// of libjpeg's default decode (accurate integer inverse DCT, its triangle-filter upsampling,
// its colour conversion), in a picture from the picture stock. Null when the file is of
// another kind or a baseline file is damaged; the caller then reads it the usual way. A
// damaged progressive file gives what arrived before the damage. parts as for
// DecodeJpegScan; the picture is the same for any number of parts.
QImage DecodeFullJpeg(const QByteArray& file, int parts = 0);

// The decode's inverse DCT of one block: 64 coefficients in natural order, not yet
// dequantised, with the header's quantisation table, into 8 x 8 samples.
void InverseDctBlock(const int16_t* coefficients, const uint16_t* quant, uint8_t* out,
                     ptrdiff_t stride);

// Lets the decode use the processor's wide vectors where it has them (the default) or keeps it
// to the plain paths, which give the same pixels.
void UseWideVectorsForFullJpeg(bool use);

} // namespace kavori
