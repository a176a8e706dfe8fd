#include "JpegHeader.h"

#include <algorithm>

namespace kavori {

const std::array<uint8_t, 64> kJpegZigzag = {
    0,  1,  8,  16, 9,  2,  3,  10, 17, 24, 32, 25, 18, 11, 4,  5,  12, 19, 26, 33, 40, 48,
    41, 34, 27, 20, 13, 6,  7,  14, 21, 28, 35, 42, 49, 56, 57, 50, 43, 36, 29, 22, 15, 23,
    30, 37, 44, 51, 58, 59, 52, 45, 38, 31, 39, 46, 53, 60, 61, 54, 47, 55, 62, 63};

namespace {

// A bounds-checked reader over one marker segment.
class Segment {
public:
    Segment(const uint8_t* data, qsizetype size) : data_(data), size_(size) {}
    bool has(qsizetype n) const { return n >= 0 && pos_ + n <= size_; }
    int byte() { return has(1) ? data_[pos_++] : (ok_ = false, 0); }
    int word()
    {
        const int hi = byte();
        return (hi << 8) | byte();
    }
    bool ok() const { return ok_; }
    bool atEnd() const { return pos_ >= size_; }
    qsizetype pos() const { return pos_; }

private:
    const uint8_t* data_;
    qsizetype size_;
    qsizetype pos_ = 0;
    bool ok_ = true;
};

bool readFrame(Segment s, int marker, JpegHeader& h)
{
    const int precision = s.byte();
    h.height = s.word();
    h.width = s.word();
    const int count = s.byte();
    h.baseline = (marker == 0xC0 || marker == 0xC1) && precision == 8;
    h.progressive = marker == 0xC2 && precision == 8;
    if (!s.ok() || count < 1 || count > 4 || h.width == 0)
        return false;
    h.components.clear();
    for (int i = 0; i < count; ++i) {
        JpegComponent c;
        c.id = s.byte();
        const int sampling = s.byte();
        c.h = sampling >> 4;
        c.v = sampling & 15;
        c.quantTable = s.byte();
        if (c.h < 1 || c.h > 4 || c.v < 1 || c.v > 4 || c.quantTable > 3)
            return false;
        h.components.push_back(c);
    }
    return s.ok();
}

bool readHuffman(Segment s, JpegHeader& h)
{
    while (!s.atEnd()) {
        const int kindAndSlot = s.byte();
        const int slot = kindAndSlot & 15;
        if ((kindAndSlot >> 4) > 1 || slot > 3)
            return false;
        JpegHuffmanCodes& codes = (kindAndSlot >> 4) ? h.ac[slot] : h.dc[slot];
        int total = 0;
        for (auto& count : codes.counts)
            total += count = uint8_t(s.byte());
        if (!s.ok() || total > 256)
            return false;
        codes.symbols.resize(total);
        for (auto& symbol : codes.symbols)
            symbol = uint8_t(s.byte());
        codes.defined = s.ok();
    }
    return s.ok();
}

bool readQuantisation(Segment s, JpegHeader& h)
{
    while (!s.atEnd()) {
        const int precisionAndSlot = s.byte();
        const int slot = precisionAndSlot & 15;
        const bool wide = (precisionAndSlot >> 4) != 0;
        if (slot > 3 || (precisionAndSlot >> 4) > 1)
            return false;
        for (int i = 0; i < 64; ++i)
            h.quant[slot][kJpegZigzag[i]] = uint16_t(wide ? s.word() : s.byte());
        h.quantDefined[slot] = s.ok();
    }
    return s.ok();
}

bool readScan(Segment s, JpegHeader& h)
{
    h.scanComponents = s.byte();
    if (h.scanComponents < 1 || h.scanComponents > 4)
        return false;
    for (int i = 0; i < h.scanComponents; ++i) {
        const int id = s.byte();
        const int tables = s.byte();
        // Only a scan of all components in frame order is decoded here.
        if (i >= int(h.components.size()) || h.components[i].id != id)
            return false;
        h.components[i].dcTable = tables >> 4;
        h.components[i].acTable = tables & 15;
        if (h.components[i].dcTable > 3 || h.components[i].acTable > 3)
            return false;
    }
    const int start = s.byte();
    const int end = s.byte();
    const int approximation = s.byte();
    h.fullSpectrum = start == 0 && end == 63 && approximation == 0;
    return s.ok();
}

void readAdobe(Segment s, JpegHeader& h)
{
    // "Adobe", version, flags0, flags1, transform: 0 means the components are stored as is.
    const char signature[] = "Adobe";
    for (int i = 0; i < 5; ++i)
        if (s.byte() != signature[i])
            return;
    for (int i = 0; i < 6; ++i)
        s.byte();
    const int transform = s.byte();
    h.adobeRgb = s.ok() && transform == 0;
}

} // namespace

std::optional<JpegHeader> ReadJpegHeader(const QByteArray& file)
{
    const auto* data = reinterpret_cast<const uint8_t*>(file.constData());
    const qsizetype size = file.size();
    if (size < 4 || data[0] != 0xFF || data[1] != 0xD8)
        return std::nullopt;
    JpegHeader h;
    bool haveFrame = false;
    qsizetype pos = 2;
    while (pos + 1 < size) {
        if (data[pos] != 0xFF)
            return std::nullopt;
        while (pos + 1 < size && data[pos + 1] == 0xFF)
            ++pos; // fill bytes
        if (pos + 1 >= size)
            break;
        const int marker = data[pos + 1];
        pos += 2;
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7))
            continue; // markers without a segment
        if (marker == 0xD9 || marker == 0x00 || pos + 2 > size)
            return std::nullopt;
        const int length = (data[pos] << 8) | data[pos + 1];
        if (length < 2 || pos + length > size)
            return std::nullopt;
        const Segment segment(data + pos + 2, length - 2);
        bool ok = true;
        if ((marker >= 0xC0 && marker <= 0xCF) && marker != 0xC4 && marker != 0xC8 &&
            marker != 0xCC) {
            ok = !haveFrame && readFrame(segment, marker, h);
            haveFrame = true;
        } else if (marker == 0xC4) {
            ok = readHuffman(segment, h);
        } else if (marker == 0xDB) {
            ok = readQuantisation(segment, h);
        } else if (marker == 0xDD) {
            Segment s = segment;
            h.restartInterval = s.word();
            ok = s.ok();
        } else if (marker == 0xEE) {
            readAdobe(segment, h);
        } else if (marker == 0xDA) {
            h.firstScan = pos - 2;
            if (!haveFrame || (!h.progressive && !readScan(segment, h)))
                return std::nullopt;
            h.scanData = pos + length;
            return h;
        }
        if (!ok)
            return std::nullopt;
        pos += length;
    }
    return std::nullopt;
}

bool OurJpegDecodersTake(const JpegHeader& h)
{
    const size_t count = h.components.size();
    const bool sequential = h.baseline && h.fullSpectrum && h.scanComponents == int(count);
    if (!(sequential || h.progressive) || h.adobeRgb || h.height == 0 || h.width == 0 ||
        (count != 1 && count != 3))
        return false;
    for (const JpegComponent& c : h.components)
        if (!h.quantDefined[size_t(c.quantTable)])
            return false;
    if (count == 1)
        return true;
    const bool rgbNames =
        h.components[0].id == 'R' && h.components[1].id == 'G' && h.components[2].id == 'B';
    const JpegComponent& luma = h.components[0];
    return !rgbNames && luma.h <= 2 && luma.v <= 2 && h.components[1].h == 1 &&
           h.components[1].v == 1 && h.components[2].h == 1 && h.components[2].v == 1;
}

std::optional<JpegScanHeader> ReadJpegScanHeader(const QByteArray& file, qsizetype pos,
                                                 JpegHeader& header)
{
    const auto* data = reinterpret_cast<const uint8_t*>(file.constData());
    const qsizetype size = file.size();
    while (pos + 1 < size) {
        if (data[pos] != 0xFF)
            return std::nullopt;
        while (pos + 1 < size && data[pos + 1] == 0xFF)
            ++pos; // fill bytes
        if (pos + 1 >= size)
            break;
        const int marker = data[pos + 1];
        pos += 2;
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7))
            continue; // markers without a segment
        if (marker == 0xD9 || marker == 0x00 || pos + 2 > size)
            return std::nullopt;
        const int length = (data[pos] << 8) | data[pos + 1];
        if (length < 2 || pos + length > size)
            return std::nullopt;
        Segment segment(data + pos + 2, length - 2);
        if (marker == 0xC4) {
            if (!readHuffman(segment, header))
                return std::nullopt;
        } else if (marker == 0xDB) {
            if (!readQuantisation(segment, header))
                return std::nullopt;
        } else if (marker == 0xDD) {
            header.restartInterval = segment.word();
            if (!segment.ok())
                return std::nullopt;
        } else if (marker == 0xDA) {
            JpegScanHeader scan;
            scan.count = segment.byte();
            if (scan.count < 1 || scan.count > 4)
                return std::nullopt;
            for (int i = 0; i < scan.count; ++i) {
                const int id = segment.byte();
                const int tables = segment.byte();
                const auto found =
                    std::find_if(header.components.begin(), header.components.end(),
                                 [id](const JpegComponent& c) { return c.id == id; });
                if (found == header.components.end())
                    return std::nullopt;
                scan.component[size_t(i)] = int(found - header.components.begin());
                scan.dcTable[size_t(i)] = tables >> 4;
                scan.acTable[size_t(i)] = tables & 15;
            }
            scan.start = segment.byte();
            scan.end = segment.byte();
            const int approximation = segment.byte();
            scan.high = approximation >> 4;
            scan.low = approximation & 15;
            scan.data = pos + length;
            if (!segment.ok())
                return std::nullopt;
            return scan;
        } else if ((marker >= 0xC0 && marker <= 0xCF) && marker != 0xC4 && marker != 0xC8 &&
                   marker != 0xCC) {
            return std::nullopt; // a second frame
        }
        pos += length;
    }
    return std::nullopt;
}

QByteArray ReadJpegIccProfile(const QByteArray& file)
{
    const auto* data = reinterpret_cast<const uint8_t*>(file.constData());
    const qsizetype size = file.size();
    if (size < 4 || data[0] != 0xFF || data[1] != 0xD8)
        return {};
    static const char kSignature[] = "ICC_PROFILE"; // with its closing zero: 12 bytes
    constexpr int kSignatureBytes = 12;
    std::vector<QByteArray> pieces;
    qsizetype pos = 2;
    while (pos + 4 <= size && data[pos] == 0xFF) {
        const int marker = data[pos + 1];
        if (marker == 0xFF) {
            ++pos; // fill byte
            continue;
        }
        if (marker == 0xDA || marker == 0xD9)
            break; // the profile comes before the picture's data
        const int length = (data[pos + 2] << 8) | data[pos + 3];
        if (length < 2 || pos + 2 + length > size)
            break;
        const char* body = reinterpret_cast<const char*>(data + pos + 4);
        const int bodyBytes = length - 2;
        if (marker == 0xE2 && bodyBytes > kSignatureBytes + 2 &&
            std::equal(kSignature, kSignature + kSignatureBytes, body)) {
            const int number = uint8_t(body[kSignatureBytes]);
            const int count = uint8_t(body[kSignatureBytes + 1]);
            if (count == 0 || number == 0 || number > count)
                return {};
            if (pieces.empty())
                pieces.resize(size_t(count));
            if (size_t(count) != pieces.size() || !pieces[size_t(number - 1)].isNull())
                return {};
            pieces[size_t(number - 1)] =
                QByteArray(body + kSignatureBytes + 2, bodyBytes - kSignatureBytes - 2);
        }
        pos += 2 + length;
    }
    QByteArray profile;
    for (const QByteArray& piece : pieces) {
        if (piece.isNull())
            return {};
        profile += piece;
    }
    return profile;
}

} // namespace kavori
