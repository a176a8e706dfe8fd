// Today's picture types through the loader every caller uses: the first byte picks the type
// (AVIF, HEIF, JPEG XL, PNG, TIFF or WebP) and the rest is the file, read at full size and for
// a thumbnail, with its EXIF orientation and colour profile applied.
#include "FuzzSupport.h"

#include "imaging/PictureLoader.h"

KAVORI_FUZZ_TARGET
{
    using namespace kavori;
    if (size < 1)
        return 0;
    static const char* const kTypes[] = {"avif", "heic", "jxl", "png", "tif", "webp"};
    const QString name = QStringLiteral("picture.") + QLatin1String(kTypes[data[0] % 6]);
    const QString path = fuzz::WriteScratch(name, data + 1, size - 1);
    (void)PictureSize(path);
    (void)LoadPicture(path, QSize(160, 120));
    (void)LoadPicture(path);
    return 0;
}
