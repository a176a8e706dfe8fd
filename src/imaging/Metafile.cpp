#include "Metafile.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>

#include <libwmf/api.h>
#include <libwmf/svg.h>

extern "C" {
#include <emf2svg.h>
}

#include <cstdlib>

namespace kavori {

namespace {

// The largest picture a metafile may ask for, so a damaged size field cannot exhaust memory.
constexpr int kMaxMetafileSide = 8000;

// A WMF starts with the placeable key 0x9AC6CDD7 or a standard header of type 1 or 2 and a
// header size of 9 words; anything else is not handed to the converter.
bool looksLikeWmf(const QByteArray& data)
{
    if (data.size() < 18)
        return false;
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    if (qFromLittleEndian<quint32>(p) == 0x9AC6CDD7u) {
        if (data.size() < 22 + 18)
            return false;
        p += 22;
    }
    const quint16 type = qFromLittleEndian<quint16>(p);
    const quint16 headerWords = qFromLittleEndian<quint16>(p + 2);
    return (type == 1 || type == 2) && headerWords == 9;
}

// An EMF starts with record type 1 and has " EMF" at byte 40.
bool looksLikeEmf(const QByteArray& data)
{
    if (data.size() < 88)
        return false;
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    const quint32 size = qFromLittleEndian<quint32>(p + 4);
    return qFromLittleEndian<quint32>(p) == 1 && data.mid(40, 4) == " EMF" && size >= 88 &&
           size <= quint32(data.size());
}

} // namespace

QByteArray WmfToSvg(const QByteArray& wmf)
{
    if (!looksLikeWmf(wmf))
        return {};
    wmfAPI_Options options{};
    options.function = wmf_svg_function;
    wmfAPI* api = nullptr;
    const unsigned long flags =
        WMF_OPT_FUNCTION | WMF_OPT_IGNORE_NONFATAL | WMF_OPT_NO_ERROR | WMF_OPT_NO_DEBUG;
    if (wmf_api_create(&api, flags, &options) != wmf_E_None) {
        if (api)
            wmf_api_destroy(api);
        return {};
    }
    QByteArray copy = wmf; // the library reads through a non-const pointer
    QByteArray svg;
    wmfD_Rect box;
    if (wmf_mem_open(api, reinterpret_cast<unsigned char*>(copy.data()), long(copy.size())) ==
            wmf_E_None &&
        wmf_scan(api, 0, &box) == wmf_E_None) {
        wmf_svg_t* device = WMF_SVG_GetData(api);
        float width = 0, height = 0;
        wmf_size(api, &width, &height);
        // The picture's own size; the bounding box only when the file gives none.
        const double w = width > 0 ? double(width) : double(box.BR.x - box.TL.x);
        const double h = height > 0 ? double(height) : double(box.BR.y - box.TL.y);
        if (w > 0 && h > 0) {
            // Keep the metafile's own size in device units, within sane bounds.
            const double scale = std::min(1.0, kMaxMetafileSide / std::max(w, h));
            device->bbox = box;
            device->width = unsigned(std::max(1.0, w * scale));
            device->height = unsigned(std::max(1.0, h * scale));
            device->out = wmf_stream_create(api, nullptr);
            if (device->out && wmf_play(api, 0, &box) == wmf_E_None) {
                char* buffer = nullptr;
                unsigned long length = 0;
                wmf_stream_destroy(api, device->out, &buffer, &length);
                device->out = nullptr;
                if (buffer)
                    svg = QByteArray(buffer, int(length));
            }
        }
        wmf_mem_close(api);
    }
    wmf_api_destroy(api);
    return svg;
}

QByteArray EmfToSvg(const QByteArray& emf)
{
    if (!looksLikeEmf(emf))
        return {};
    generatorOptions options{};
    options.nameSpace = const_cast<char*>("svg");
    options.verbose = false;
    options.emfplus = true;
    options.svgDelimiter = true;
    QByteArray copy = emf;
    char* out = nullptr;
    size_t length = 0;
    const int ok = emf2svg(copy.data(), size_t(copy.size()), &out, &length, &options);
    QByteArray svg;
    if (ok && out)
        svg = QByteArray(out, qsizetype(length));
    std::free(out);
    return svg;
}

QImage RenderSvg(const QByteArray& svg, const QSize& target)
{
    if (svg.isEmpty())
        return {};
    QSvgRenderer renderer(svg);
    if (!renderer.isValid())
        return {};
    QSize size = renderer.defaultSize();
    if (size.isEmpty())
        size = renderer.viewBox().size();
    if (size.isEmpty())
        return {};
    size = size.boundedTo(QSize(kMaxMetafileSide, kMaxMetafileSide));
    if (target.isValid() && !target.isEmpty() &&
        (size.width() > target.width() || size.height() > target.height()))
        size = size.scaled(target, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace kavori
