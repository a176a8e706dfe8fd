// Bitmaps of every header kind and compression (RLE4, RLE8, bit fields), and the icons that
// hold them.
#include "FuzzSupport.h"

#include "imaging/formats/BmpDecoder.h"
#include "imaging/formats/IconDecoder.h"

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    const QByteArray file =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)BmpSize(file);
    (void)DecodeBmp(file);
    (void)DecodeBmp(file, QSize(160, 120));
    (void)DecodeIconBitmap(file);
    (void)DecodeIcon(file);
    return 0;
}
