#include "FuzzSupport.h"

#include "imaging/PcxDecoder.h"

KAVORI_FUZZ_TARGET
{
    (void)kavori::DecodePcx(
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)));
    return 0;
}
