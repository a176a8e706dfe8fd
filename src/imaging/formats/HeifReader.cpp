#include "HeifReader.h"

#include <libheif/heif.h>

#include <cstring>
#include <memory>
#include <vector>

namespace kavori {

namespace {

struct HeifFree {
    void operator()(heif_context* c) const { heif_context_free(c); }
    void operator()(const heif_image_handle* h) const { heif_image_handle_release(h); }
    void operator()(const heif_image* i) const { heif_image_release(i); }
    void operator()(heif_decoding_options* o) const { heif_decoding_options_free(o); }
};
using Context = std::unique_ptr<heif_context, HeifFree>;
using Handle = std::unique_ptr<const heif_image_handle, HeifFree>;
using Image = std::unique_ptr<const heif_image, HeifFree>;
using Options = std::unique_ptr<heif_decoding_options, HeifFree>;

// The context reads from the caller's bytes, which outlive it.
struct Primary {
    Context context;
    Handle handle;
};

Primary primaryOf(const QByteArray& file)
{
    Primary p;
    p.context.reset(heif_context_alloc());
    if (!p.context || heif_context_read_from_memory_without_copy(p.context.get(), file.constData(),
                                                                 size_t(file.size()), nullptr)
                              .code != heif_error_Ok)
        return {};
    heif_image_handle* handle = nullptr;
    if (heif_context_get_primary_image_handle(p.context.get(), &handle).code != heif_error_Ok)
        return {};
    p.handle.reset(handle);
    return p;
}

QSize sizeOf(const heif_image_handle* handle)
{
    return {heif_image_handle_get_width(handle), heif_image_handle_get_height(handle)};
}

QColorSpace colorSpaceOf(const heif_image_handle* handle)
{
    switch (heif_image_handle_get_color_profile_type(handle)) {
    case heif_color_profile_type_prof:
    case heif_color_profile_type_rICC: {
        QByteArray icc(qsizetype(heif_image_handle_get_raw_color_profile_size(handle)), '\0');
        if (icc.isEmpty() ||
            heif_image_handle_get_raw_color_profile(handle, icc.data()).code != heif_error_Ok)
            return {};
        return QColorSpace::fromIccProfile(icc);
    }
    case heif_color_profile_type_nclx: {
        heif_color_profile_nclx* nclx = nullptr;
        if (heif_image_handle_get_nclx_color_profile(handle, &nclx).code != heif_error_Ok)
            return {};
        const QColorSpace space =
            ColorSpaceFromCodePoints(nclx->color_primaries, nclx->transfer_characteristics);
        heif_nclx_color_profile_free(nclx);
        return space;
    }
    default:
        return {};
    }
}

// A stored thumbnail at least as large as the picture is wanted, so the full picture need not
// be decoded; null when there is none.
Handle thumbnailFor(const heif_image_handle* primary, const QSize& wanted)
{
    const int count = heif_image_handle_get_number_of_thumbnails(primary);
    std::vector<heif_item_id> ids(size_t(qMax(count, 0)));
    if (count <= 0 ||
        heif_image_handle_get_list_of_thumbnail_IDs(primary, ids.data(), count) != count)
        return {};
    Handle best;
    for (const heif_item_id id : ids) {
        heif_image_handle* thumb = nullptr;
        if (heif_image_handle_get_thumbnail(primary, id, &thumb).code != heif_error_Ok)
            continue;
        Handle candidate(thumb);
        const QSize size = sizeOf(thumb);
        if (size.width() < wanted.width() || size.height() < wanted.height())
            continue;
        if (!best || size.width() < sizeOf(best.get()).width())
            best = std::move(candidate);
    }
    return best;
}

} // namespace

PictureHeader HeifReader::readHeader(const QByteArray& file) const
{
    const Primary p = primaryOf(file);
    if (!p.handle)
        return {};
    return {sizeOf(p.handle.get()), colorSpaceOf(p.handle.get())};
}

QImage HeifReader::read(const QByteArray& file, const QSize& target) const
{
    const Primary p = primaryOf(file);
    if (!p.handle)
        return {};
    const QSize full = sizeOf(p.handle.get());
    if (full.isEmpty() || qint64(full.width()) * full.height() * 4 > kMaxPictureBytes)
        return {};
    const bool shrink = target.isValid() && !target.isEmpty() &&
                        (full.width() > target.width() || full.height() > target.height());
    Handle thumbnail;
    if (shrink)
        thumbnail = thumbnailFor(p.handle.get(), full.scaled(target, Qt::KeepAspectRatio));
    const heif_image_handle* source = thumbnail ? thumbnail.get() : p.handle.get();

    const Options options(heif_decoding_options_alloc());
    if (!options)
        return {};
    options->convert_hdr_to_8bit = 1;
    heif_image* decoded = nullptr;
    if (heif_decode_image(source, &decoded, heif_colorspace_RGB, heif_chroma_interleaved_RGBA,
                          options.get())
            .code != heif_error_Ok)
        return {};
    const Image image(decoded);
    int stride = 0;
    const uint8_t* pixels =
        heif_image_get_plane_readonly(decoded, heif_channel_interleaved, &stride);
    const int width = heif_image_get_width(decoded, heif_channel_interleaved);
    const int height = heif_image_get_height(decoded, heif_channel_interleaved);
    if (!pixels || width <= 0 || height <= 0 || stride < width * 4)
        return {};
    QImage picture(width, height, QImage::Format_RGBA8888);
    if (picture.isNull())
        return {};
    for (int y = 0; y < height; ++y)
        std::memcpy(picture.scanLine(y), pixels + qsizetype(y) * stride, size_t(width) * 4);
    picture = FitDecoded(picture, target);
    picture.setColorSpace(colorSpaceOf(p.handle.get()));
    return picture;
}

} // namespace kavori
