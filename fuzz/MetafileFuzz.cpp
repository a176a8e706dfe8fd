// Windows metafiles: each input is tried as a WMF and as an EMF, sized and drawn.
#include "FuzzSupport.h"

#include "imaging/Metafile.h"

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    const QByteArray file(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)WmfSize(file);
    (void)RenderSvg(WmfToSvg(file), QSize(64, 64));
    (void)EmfSize(file);
    (void)RenderSvg(EmfToSvg(file), QSize(64, 64));
    return 0;
}
