#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>

namespace kavori::test {

// Small picture files of every type, made byte by byte so the tests know what each holds.

// An animated (two frames) or still 2 x 2 GIF; the signature as given ("GIF89a", "gif89a",
// "GIF87a").
QByteArray Gif(const QByteArray& signature, bool twoFrames);
// A 2 x 2 GIF89a of one colour a frame (up to four), each standing its delay in hundredths of
// a second; loops as its NETSCAPE block says (0 for ever), or without the block (plays once)
// for -1.
QByteArray ColourGif(const QList<QRgb>& colours, const QList<int>& delays, int loops);
// An icon (or cursor) holding a 16 x 16 red and a 32 x 32 blue picture.
QByteArray IconFile(bool cursor);
// A metafile filled with a red rectangle: 100 x 50 pixels, or for the WMF width x height
// units of its placeable header at unitsPerInch.
QByteArray RedWmf(int width = 100, int height = 50, int unitsPerInch = 96);
QByteArray RedEmf();
// PCX pictures of 8 x 4 pixels: kinds "8bit", "24bit", "planar16", "cga", "packed16", "mono".
QByteArray Pcx(const char* kind);
// TGA pictures of 4 x 3 pixels: kinds "mapped", "rle24", "grey", "top16", "rle32".
QByteArray Tga(const char* kind);

// The colour the PCX and TGA samples have at (x, y).
QColor SampleColour(int x, int y);

} // namespace kavori::test
