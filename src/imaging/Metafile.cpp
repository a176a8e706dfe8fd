#include "Metafile.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>

#include <libwmf/api.h>
#include <libwmf/svg.h>

extern "C" {
#include <emf2svg.h>
}

#include <algorithm>
#include <cmath>
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

// An EMF starts with record type 1 and has " EMF" at byte 40. The converter trusts the sizes
// and offsets it reads, so the file is handed over only when they hold: the header's
// description lies inside the header, and every record up to the end-of-file record is at
// least 8 bytes, a whole number of 4-byte units, and inside the file.
bool looksLikeEmf(const QByteArray& data)
{
    if (data.size() < 88)
        return false;
    const auto* p = reinterpret_cast<const uchar*>(data.constData());
    const quint64 headerSize = qFromLittleEndian<quint32>(p + 4);
    if (qFromLittleEndian<quint32>(p) != 1 || data.mid(40, 4) != " EMF" || headerSize < 88 ||
        headerSize > quint64(data.size()))
        return false;
    const quint64 descriptionChars = qFromLittleEndian<quint32>(p + 60);
    const quint64 descriptionOffset = qFromLittleEndian<quint32>(p + 64);
    if (descriptionChars > 0 &&
        (descriptionOffset < 88 || descriptionOffset + descriptionChars * 2 > headerSize))
        return false;
    constexpr quint32 kEndOfFile = 14;
    for (quint64 at = 0; at + 8 <= quint64(data.size());) {
        const quint32 type = qFromLittleEndian<quint32>(p + at);
        const quint64 size = qFromLittleEndian<quint32>(p + at + 4);
        if (size < 8 || size % 4 != 0 || at + size > quint64(data.size()))
            return false;
        if (type == kEndOfFile)
            return true;
        at += size;
    }
    return false;
}

// Screen pixels per inch, and an EMF frame's hundredths of a millimetre per inch.
constexpr double kPixelsPerInch = 96.0;
constexpr double kFrameUnitsPerInch = 2540.0;

QSize boundedSize(double width, double height)
{
    if (!(width >= 0.5 && height >= 0.5))
        return {};
    const double scale = std::min(1.0, kMaxMetafileSide / std::max(width, height));
    return QSize(std::max(1, int(std::lround(width * scale))),
                 std::max(1, int(std::lround(height * scale))));
}

} // namespace

QSize WmfSize(const QByteArray& wmf)
{
    if (!looksLikeWmf(wmf))
        return {};
    const auto* p = reinterpret_cast<const uchar*>(wmf.constData());
    if (qFromLittleEndian<quint32>(p) != 0x9AC6CDD7u)
        return {};
    const int left = qFromLittleEndian<qint16>(p + 6);
    const int top = qFromLittleEndian<qint16>(p + 8);
    const int right = qFromLittleEndian<qint16>(p + 10);
    const int bottom = qFromLittleEndian<qint16>(p + 12);
    const int unitsPerInch = qFromLittleEndian<quint16>(p + 14);
    if (unitsPerInch == 0)
        return {};
    return boundedSize(std::abs(right - left) * kPixelsPerInch / unitsPerInch,
                       std::abs(bottom - top) * kPixelsPerInch / unitsPerInch);
}

QSize EmfSize(const QByteArray& emf)
{
    if (!looksLikeEmf(emf))
        return {};
    const auto* p = reinterpret_cast<const uchar*>(emf.constData());
    const qint64 left = qFromLittleEndian<qint32>(p + 24);
    const qint64 top = qFromLittleEndian<qint32>(p + 28);
    const qint64 right = qFromLittleEndian<qint32>(p + 32);
    const qint64 bottom = qFromLittleEndian<qint32>(p + 36);
    return boundedSize(double(std::abs(right - left)) * kPixelsPerInch / kFrameUnitsPerInch,
                       double(std::abs(bottom - top)) * kPixelsPerInch / kFrameUnitsPerInch);
}

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
    // The converter allocates its record buffer from the header's largest-record field before
    // reading a record, so a damaged field could take gigabytes: no record is larger than the
    // file that holds it.
    uchar* header = reinterpret_cast<uchar*>(copy.data()) +
                    (qFromLittleEndian<quint32>(copy.constData()) == 0x9AC6CDD7u ? 22 : 0);
    const quint32 largestRecordWords = quint32(copy.size() / 2);
    if (qFromLittleEndian<quint32>(header + 12) > largestRecordWords)
        qToLittleEndian<quint32>(largestRecordWords, header + 12);
    QByteArray svg;
    wmfD_Rect box;
    if (wmf_mem_open(api, reinterpret_cast<unsigned char*>(copy.data()), long(copy.size())) ==
            wmf_E_None &&
        wmf_scan(api, 0, &box) == wmf_E_None) {
        wmf_svg_t* device = WMF_SVG_GetData(api);
        float width = 0, height = 0;
        wmf_size(api, &width, &height);
        // A placeable file's size in inches; else its own size in device units, or the
        // bounding box when it gives none.
        QSize size = WmfSize(wmf);
        if (!size.isValid())
            size = boundedSize(width > 0 ? double(width) : double(box.BR.x - box.TL.x),
                               height > 0 ? double(height) : double(box.BR.y - box.TL.y));
        if (size.isValid()) {
            device->bbox = box;
            device->width = unsigned(size.width());
            device->height = unsigned(size.height());
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

QImage RenderSvg(const QByteArray& svg, const QSize& target, QSize size)
{
    if (svg.isEmpty())
        return {};
    QSvgRenderer renderer(svg);
    if (!renderer.isValid())
        return {};
    if (size.isEmpty())
        size = renderer.defaultSize();
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
    renderer.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
    return image;
}

} // namespace kavori
