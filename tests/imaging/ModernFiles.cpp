#include "ModernFiles.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>
#include <QtEndian>

#include <avif/avif.h>
#include <jxl/encode.h>
#include <libheif/heif.h>

#include <cstring>
#include <memory>

namespace kavori::test {

namespace {

QImage rgba(const QImage& picture)
{
    return picture.convertToFormat(QImage::Format_RGBA8888);
}

void put32(QByteArray& out, quint32 value, bool big)
{
    char bytes[4];
    if (big)
        qToBigEndian(value, bytes);
    else
        qToLittleEndian(value, bytes);
    out.append(bytes, 4);
}

quint32 crc32Of(const QByteArray& bytes)
{
    quint32 crc = 0xFFFFFFFFu;
    for (const char c : bytes) {
        crc ^= uchar(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

QByteArray pngChunk(const QByteArray& type, const QByteArray& data)
{
    QByteArray chunk;
    put32(chunk, quint32(data.size()), true);
    const QByteArray body = type + data;
    chunk += body;
    put32(chunk, crc32Of(body), true);
    return chunk;
}

QByteArray riffChunk(const QByteArray& type, const QByteArray& data)
{
    QByteArray chunk = type;
    put32(chunk, quint32(data.size()), false);
    chunk += data;
    if (data.size() & 1)
        chunk += '\0';
    return chunk;
}

QByteArray qtWritten(const QImage& picture, const char* format, int quality = -1)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (quality >= 0)
        writer.setQuality(quality);
    return writer.write(picture) ? bytes : QByteArray();
}

using HeifImage = std::unique_ptr<heif_image, void (*)(const heif_image*)>;

HeifImage heifImage(const QImage& picture)
{
    const QImage source = rgba(picture);
    heif_image* made = nullptr;
    heif_image_create(source.width(), source.height(), heif_colorspace_RGB,
                      heif_chroma_interleaved_RGBA, &made);
    heif_image_add_plane(made, heif_channel_interleaved, source.width(), source.height(), 8);
    int stride = 0;
    uint8_t* plane = heif_image_get_plane(made, heif_channel_interleaved, &stride);
    for (int y = 0; y < source.height(); ++y)
        std::memcpy(plane + qsizetype(y) * stride, source.constScanLine(y),
                    size_t(source.width()) * 4);
    return HeifImage(made, heif_image_release);
}

} // namespace

QByteArray ExifBlock(int orientation)
{
    QByteArray exif("Exif\0\0II*\0", 10);
    put32(exif, 8, false);                              // the first directory follows the header
    exif.append("\x01\x00", 2);                         // one entry
    exif.append("\x12\x01\x03\x00\x01\x00\x00\x00", 8); // Orientation, SHORT, 1
    exif.append(char(orientation)).append('\0').append("\0\0", 2); // its value
    put32(exif, 0, false);                                         // no next directory
    return exif;
}

QByteArray EncodePng(const QImage& picture, const ModernOptions& options)
{
    QImage tagged = picture;
    if (!options.icc.isEmpty())
        tagged.setColorSpace(QColorSpace::fromIccProfile(options.icc));
    QByteArray png = qtWritten(tagged, "png");
    if (options.orientation == 1 || png.size() < 33)
        return png;
    // After the 8-byte signature and the 25-byte header chunk.
    return png.left(33) + pngChunk("eXIf", ExifBlock(options.orientation).mid(6)) + png.mid(33);
}

QByteArray EncodeWebp(const QImage& picture, const ModernOptions& options)
{
    const QByteArray webp = qtWritten(picture, "webp", 95);
    if (options.orientation == 1 || webp.size() < 20 || webp.mid(12, 4) != "VP8 ")
        return webp;
    // The extended layout: a VP8X header announcing EXIF, the picture, then the EXIF chunk.
    QByteArray vp8x(10, '\0');
    vp8x[0] = char(0x08);
    const int w = picture.width() - 1, h = picture.height() - 1;
    vp8x[4] = char(w & 0xff), vp8x[5] = char((w >> 8) & 0xff), vp8x[6] = char(w >> 16);
    vp8x[7] = char(h & 0xff), vp8x[8] = char((h >> 8) & 0xff), vp8x[9] = char(h >> 16);
    const QByteArray body = "WEBP" + riffChunk("VP8X", vp8x) + webp.mid(12) +
                            riffChunk("EXIF", ExifBlock(options.orientation).mid(6));
    QByteArray file = "RIFF";
    put32(file, quint32(body.size()), false);
    return file + body;
}

QByteArray EncodeTiff(const QImage& picture, const ModernOptions& options)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "tiff");
    const QImageIOHandler::Transformations turns[] = {
        QImageIOHandler::TransformationNone,     QImageIOHandler::TransformationNone,
        QImageIOHandler::TransformationMirror,   QImageIOHandler::TransformationRotate180,
        QImageIOHandler::TransformationFlip,     QImageIOHandler::TransformationFlipAndRotate90,
        QImageIOHandler::TransformationRotate90, QImageIOHandler::TransformationMirrorAndRotate90,
        QImageIOHandler::TransformationRotate270};
    writer.setTransformation(turns[qBound(1, options.orientation, 8)]);
    return writer.write(picture) ? bytes : QByteArray();
}

namespace {
void put24(QByteArray& out, quint32 value)
{
    out.append(char(value & 0xff)).append(char((value >> 8) & 0xff)).append(char(value >> 16));
}
} // namespace

QByteArray AnimatedWebp(const QImage& first, const QImage& second)
{
    QByteArray vp8x(4, '\0');
    vp8x[0] = char(0x02); // animation
    put24(vp8x, quint32(first.width() - 1));
    put24(vp8x, quint32(first.height() - 1));
    QByteArray body = "WEBP" + riffChunk("VP8X", vp8x) + riffChunk("ANIM", QByteArray(6, '\0'));
    for (const QImage& frame : {first, second}) {
        const QByteArray still = qtWritten(frame, "webp", 95);
        QByteArray anmf;
        put24(anmf, 0);
        put24(anmf, 0);
        put24(anmf, quint32(frame.width() - 1));
        put24(anmf, quint32(frame.height() - 1));
        put24(anmf, 100);
        anmf.append('\0');
        body += riffChunk("ANMF", anmf + still.mid(12)); // the frame's own "VP8 " chunk
    }
    QByteArray file = "RIFF";
    put32(file, quint32(body.size()), false);
    return file + body;
}

QByteArray TwoPageTiff(const QImage& first, const QImage& second)
{
    // Little-endian: header, then per page its pixels, its bits-per-sample triple and its
    // directory of nine entries.
    QByteArray file("II*\0", 4);
    put32(file, 0, false); // patched to the first directory
    qsizetype link = 4;
    for (const QImage& page : {first, second}) {
        const QImage rgb = page.convertToFormat(QImage::Format_RGB888);
        const quint32 pixels = quint32(file.size());
        for (int y = 0; y < rgb.height(); ++y)
            file.append(reinterpret_cast<const char*>(rgb.constScanLine(y)), rgb.width() * 3);
        const quint32 bits = quint32(file.size());
        file.append("\x08\0\x08\0\x08\0", 6);
        const quint32 directory = quint32(file.size());
        qToLittleEndian(directory, file.data() + link);
        const quint32 w = quint32(rgb.width()), h = quint32(rgb.height());
        const quint32 entries[][4] = {{256, 4, 1, w}, {257, 4, 1, h}, {258, 3, 3, bits},
                                      {259, 3, 1, 1}, {262, 3, 1, 2}, {273, 4, 1, pixels},
                                      {277, 3, 1, 3}, {278, 4, 1, h}, {279, 4, 1, w * h * 3}};
        file.append("\x09\0", 2);
        for (const auto& e : entries) {
            char entry[12] = {};
            qToLittleEndian(quint16(e[0]), entry);
            qToLittleEndian(quint16(e[1]), entry + 2);
            qToLittleEndian(e[2], entry + 4);
            if (e[1] == 3 && e[2] == 1)
                qToLittleEndian(quint16(e[3]), entry + 8);
            else
                qToLittleEndian(e[3], entry + 8);
            file.append(entry, 12);
        }
        link = file.size();
        put32(file, 0, false);
    }
    return file;
}

QByteArray EncodeAvif(const QImage& picture, const ModernOptions& options, QString* why)
{
    if (!avifCodecName(AVIF_CODEC_CHOICE_AUTO, AVIF_CODEC_FLAG_CAN_ENCODE)) {
        *why = QStringLiteral("libavif here has no AV1 encoder");
        return {};
    }
    const QImage source = rgba(picture);
    std::unique_ptr<avifImage, void (*)(avifImage*)> image(
        avifImageCreate(uint32_t(source.width()), uint32_t(source.height()), 8,
                        AVIF_PIXEL_FORMAT_YUV444),
        avifImageDestroy);
    avifRGBImage rgb;
    avifRGBImageSetDefaults(&rgb, image.get());
    rgb.format = AVIF_RGB_FORMAT_RGBA;
    rgb.pixels = const_cast<uint8_t*>(source.constBits());
    rgb.rowBytes = uint32_t(source.bytesPerLine());
    if (avifImageRGBToYUV(image.get(), &rgb) != AVIF_RESULT_OK) {
        *why = QStringLiteral("libavif could not convert the picture");
        return {};
    }
    if (!options.icc.isEmpty())
        avifImageSetProfileICC(image.get(), reinterpret_cast<const uint8_t*>(options.icc.data()),
                               size_t(options.icc.size()));
    // irot turns anticlockwise; imir mode 1 exchanges left and right, 0 top and bottom.
    switch (options.orientation) {
    case 2:
        image->transformFlags |= AVIF_TRANSFORM_IMIR, image->imir.mode = 1;
        break;
    case 3:
        image->transformFlags |= AVIF_TRANSFORM_IROT, image->irot.angle = 2;
        break;
    case 4:
        image->transformFlags |= AVIF_TRANSFORM_IMIR, image->imir.mode = 0;
        break;
    case 6:
        image->transformFlags |= AVIF_TRANSFORM_IROT, image->irot.angle = 3;
        break;
    case 8:
        image->transformFlags |= AVIF_TRANSFORM_IROT, image->irot.angle = 1;
        break;
    default:
        break;
    }
    std::unique_ptr<avifEncoder, void (*)(avifEncoder*)> encoder(avifEncoderCreate(),
                                                                 avifEncoderDestroy);
    encoder->speed = 10;
    encoder->minQuantizer = 0;
    encoder->maxQuantizer = 8;
    encoder->maxThreads = 2;
    avifRWData output = AVIF_DATA_EMPTY;
    if (avifEncoderWrite(encoder.get(), image.get(), &output) != AVIF_RESULT_OK) {
        *why = QStringLiteral("libavif's encoder failed");
        return {};
    }
    const QByteArray file(reinterpret_cast<const char*>(output.data), qsizetype(output.size));
    avifRWDataFree(&output);
    return file;
}

QByteArray EncodeHeif(const QImage& picture, const ModernOptions& options, QString* why)
{
    std::unique_ptr<heif_context, void (*)(heif_context*)> context(heif_context_alloc(),
                                                                   heif_context_free);
    heif_encoder* raw = nullptr;
    // HEVC is what phones write; AV1 in HEIF serves where no HEVC encoder is built in.
    if (heif_context_get_encoder_for_format(context.get(), heif_compression_HEVC, &raw).code !=
            heif_error_Ok &&
        heif_context_get_encoder_for_format(context.get(), heif_compression_AV1, &raw).code !=
            heif_error_Ok) {
        *why = QStringLiteral("libheif here has neither an HEVC nor an AV1 encoder");
        return {};
    }
    std::unique_ptr<heif_encoder, void (*)(heif_encoder*)> encoder(raw, heif_encoder_release);
    heif_encoder_set_lossy_quality(encoder.get(), 95);

    const HeifImage image = heifImage(picture);
    heif_image* made = image.get();
    if (!options.icc.isEmpty())
        heif_image_set_raw_color_profile(made, "prof", options.icc.constData(),
                                         size_t(options.icc.size()));

    std::unique_ptr<heif_encoding_options, void (*)(heif_encoding_options*)> encoding(
        heif_encoding_options_alloc(), heif_encoding_options_free);
    encoding->save_alpha_channel = 0;
    encoding->image_orientation = heif_orientation(options.orientation);
    heif_image_handle* handle = nullptr;
    if (heif_context_encode_image(context.get(), made, encoder.get(), encoding.get(), &handle)
            .code != heif_error_Ok) {
        *why = QStringLiteral("libheif's encoder failed");
        return {};
    }
    if (!options.thumbnail.isNull())
        heif_context_encode_thumbnail(context.get(), heifImage(options.thumbnail).get(), handle,
                                      encoder.get(), encoding.get(), options.thumbnailBox, nullptr);
    heif_image_handle_release(handle);

    QByteArray file;
    heif_writer writer{1, [](heif_context*, const void* data, size_t size, void* to) {
                           static_cast<QByteArray*>(to)->append(static_cast<const char*>(data),
                                                                qsizetype(size));
                           return heif_error{heif_error_Ok, heif_suberror_Unspecified, ""};
                       }};
    if (heif_context_write(context.get(), &writer, &file).code != heif_error_Ok) {
        *why = QStringLiteral("libheif could not write the file");
        return {};
    }
    return file;
}

QByteArray EncodeJxl(const QImage& picture, const ModernOptions& options, QString* why)
{
    std::unique_ptr<JxlEncoder, void (*)(JxlEncoder*)> encoder(JxlEncoderCreate(nullptr),
                                                               JxlEncoderDestroy);
    const QImage source = picture.convertToFormat(QImage::Format_RGB888);
    JxlBasicInfo info;
    JxlEncoderInitBasicInfo(&info);
    info.xsize = uint32_t(source.width());
    info.ysize = uint32_t(source.height());
    info.bits_per_sample = 8;
    info.num_color_channels = 3;
    info.uses_original_profile = JXL_TRUE; // lossless: the stored values are the picture's
    info.orientation = JxlOrientation(options.orientation);
    if (JxlEncoderSetBasicInfo(encoder.get(), &info) != JXL_ENC_SUCCESS) {
        *why = QStringLiteral("libjxl refused the picture's description");
        return {};
    }
    if (!options.icc.isEmpty()) {
        JxlEncoderSetICCProfile(encoder.get(), reinterpret_cast<const uint8_t*>(options.icc.data()),
                                size_t(options.icc.size()));
    } else {
        JxlColorEncoding srgb;
        JxlColorEncodingSetToSRGB(&srgb, JXL_FALSE);
        JxlEncoderSetColorEncoding(encoder.get(), &srgb);
    }
    JxlEncoderFrameSettings* frame = JxlEncoderFrameSettingsCreate(encoder.get(), nullptr);
    JxlEncoderSetFrameLossless(frame, JXL_TRUE);
    JxlEncoderFrameSettingsSetOption(frame, JXL_ENC_FRAME_SETTING_EFFORT, 1);
    QByteArray pixels;
    for (int y = 0; y < source.height(); ++y)
        pixels.append(reinterpret_cast<const char*>(source.constScanLine(y)), source.width() * 3);
    const JxlPixelFormat format{3, JXL_TYPE_UINT8, JXL_NATIVE_ENDIAN, 0};
    if (JxlEncoderAddImageFrame(frame, &format, pixels.constData(), size_t(pixels.size())) !=
        JXL_ENC_SUCCESS) {
        *why = QStringLiteral("libjxl refused the frame");
        return {};
    }
    JxlEncoderCloseInput(encoder.get());
    QByteArray file(4096, '\0');
    size_t written = 0;
    for (;;) {
        auto* next = reinterpret_cast<uint8_t*>(file.data()) + written;
        size_t room = size_t(file.size()) - written;
        const JxlEncoderStatus status = JxlEncoderProcessOutput(encoder.get(), &next, &room);
        written = size_t(next - reinterpret_cast<uint8_t*>(file.data()));
        if (status == JXL_ENC_SUCCESS)
            break;
        if (status != JXL_ENC_NEED_MORE_OUTPUT) {
            *why = QStringLiteral("libjxl's encoder failed");
            return {};
        }
        file.resize(file.size() * 2);
    }
    file.resize(qsizetype(written));
    return file;
}

} // namespace kavori::test
