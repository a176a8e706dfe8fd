#pragma once

#include "JpegHeader.h"
#include "JpegScan.h"

#include <QByteArray>

namespace kavori {

// Decodes every scan of a progressive JPEG into coefficient blocks laid out as DecodeJpegScan
// lays out a baseline file's: in the order of the layout's MCUs, of each block only the rows
// and columns `kept` keeps for its component and one spare, not yet dequantised, DC values
// summed up. The same file made baseline gives the same blocks.
//
// A scan that only adds coefficients outside the kept ones is passed over without decoding.
// Scans of different components, and DC scans beside AC scans, are decoded side by side.
// A file cut short, or damaged inside a scan, gives the blocks of what came before the damage
// (as a browser shows a picture still arriving), the same on every decode. Null data when the
// header is unusable, memory ran out, not even the first scan could be read, or a
// quantisation table is redefined before its component's first scan.
JpegBlocks DecodeProgressiveJpeg(const QByteArray& file, const JpegHeader& header,
                                 const JpegScanLayout& layout,
                                 const std::array<JpegKeptRows, 4>& kept);

} // namespace kavori
