// Our JPEG decoder at the sizes the program asks for: a screen, a thumbnail, an eighth.
#include "FuzzSupport.h"

#include "imaging/ScaledJpeg.h"

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    const QByteArray file =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)DecodeJpegAtSize(file, QSize(1920, 1080));
    (void)DecodeJpegAtSize(file, QSize(160, 120), 2);
    (void)DecodeScaledJpeg(file, 8);
    return 0;
}
