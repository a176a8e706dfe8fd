#include "FuzzSupport.h"

#include "imaging/TgaDecoder.h"

KAVORI_FUZZ_TARGET
{
    (void)kavori::DecodeTga(
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)));
    return 0;
}
