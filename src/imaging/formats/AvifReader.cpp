#include "AvifReader.h"

#include <QThread>
#include <QTransform>

#include <avif/avif.h>

#include <memory>

namespace kavori {

namespace {

struct DecoderFree {
    void operator()(avifDecoder* d) const { avifDecoderDestroy(d); }
};
using Decoder = std::unique_ptr<avifDecoder, DecoderFree>;

// A decoder that has parsed the file's boxes (sizes, colour, orientation); null on failure.
Decoder parsed(const QByteArray& file)
{
    Decoder decoder(avifDecoderCreate());
    if (!decoder)
        return {};
    decoder->maxThreads = QThread::idealThreadCount();
    decoder->ignoreXMP = AVIF_TRUE;
    decoder->ignoreExif = AVIF_TRUE;
    if (avifDecoderSetIOMemory(decoder.get(), reinterpret_cast<const uint8_t*>(file.constData()),
                               size_t(file.size())) != AVIF_RESULT_OK ||
        avifDecoderParse(decoder.get()) != AVIF_RESULT_OK)
        return {};
    return decoder;
}

bool quarterTurned(const avifImage* image)
{
    return (image->transformFlags & AVIF_TRANSFORM_IROT) && (image->irot.angle & 1);
}

QColorSpace colorSpaceOf(const avifImage* image)
{
    if (image->icc.size > 0)
        return QColorSpace::fromIccProfile(
            QByteArray(reinterpret_cast<const char*>(image->icc.data), qsizetype(image->icc.size)));
    return ColorSpaceFromCodePoints(image->colorPrimaries, image->transferCharacteristics);
}

// The file's rotation (irot, quarter turns anticlockwise) and then its mirror (imir).
QImage oriented(QImage picture, const avifImage* image)
{
    if ((image->transformFlags & AVIF_TRANSFORM_IROT) && image->irot.angle % 4 != 0)
        picture = picture.transformed(QTransform().rotate(-90.0 * (image->irot.angle % 4)));
    if (image->transformFlags & AVIF_TRANSFORM_IMIR)
        picture =
            image->imir.mode == 0 ? picture.mirrored(false, true) : picture.mirrored(true, false);
    return picture;
}

} // namespace

PictureHeader AvifReader::readHeader(const QByteArray& file) const
{
    const Decoder decoder = parsed(file);
    if (!decoder)
        return {};
    const avifImage* image = decoder->image;
    const QSize size(int(image->width), int(image->height));
    return {quarterTurned(image) ? size.transposed() : size, colorSpaceOf(image)};
}

QImage AvifReader::read(const QByteArray& file, const QSize& target) const
{
    const Decoder decoder = parsed(file);
    if (!decoder || qint64(decoder->image->width) * decoder->image->height * 4 > kMaxPictureBytes)
        return {};
    if (avifDecoderNextImage(decoder.get()) != AVIF_RESULT_OK)
        return {};
    const avifImage* image = decoder->image;
    QImage picture(int(image->width), int(image->height), QImage::Format_RGBA8888);
    if (picture.isNull())
        return {};
    avifRGBImage rgb;
    avifRGBImageSetDefaults(&rgb, image);
    rgb.depth = 8;
    rgb.format = AVIF_RGB_FORMAT_RGBA;
    rgb.pixels = picture.bits();
    rgb.rowBytes = uint32_t(picture.bytesPerLine());
    if (avifImageYUVToRGB(image, &rgb) != AVIF_RESULT_OK)
        return {};
    // Scaled before turning, so the turn moves the fewest pixels.
    const QSize unturned = quarterTurned(image) ? target.transposed() : target;
    picture = oriented(FitDecoded(picture, unturned), image);
    picture.setColorSpace(colorSpaceOf(image));
    return picture;
}

} // namespace kavori
