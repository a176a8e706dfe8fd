#pragma once

#include <QByteArray>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace kavori {

// The parts of a JPEG file's header that decoding its first scan needs.

struct JpegComponent {
    int id = 0;
    int h = 1; // sampling factors
    int v = 1;
    int quantTable = 0;
    int dcTable = 0;
    int acTable = 0;
};

struct JpegHuffmanCodes {
    bool defined = false;
    std::array<uint8_t, 16> counts{}; // codes of each length 1 to 16
    std::vector<uint8_t> symbols;
};

struct JpegHeader {
    int width = 0;
    int height = 0;
    bool baseline = false;    // sequential, Huffman coded, 8 bits a sample
    bool progressive = false; // progressive, Huffman coded, 8 bits a sample
    bool adobeRgb = false;    // an Adobe marker says the three components are not YCbCr
    std::vector<JpegComponent> components; // in frame order
    int scanComponents = 0;                // components interleaved in the first scan
    bool fullSpectrum = false; // the first scan carries coefficients 0 to 63 at full precision
    std::array<std::array<uint16_t, 64>, 4> quant{}; // natural (row by row) order
    std::array<bool, 4> quantDefined{};
    std::array<JpegHuffmanCodes, 4> dc;
    std::array<JpegHuffmanCodes, 4> ac;
    int restartInterval = 0; // MCUs between restart markers; 0 for none
    qsizetype scanData = 0;  // offset of the first scan's entropy-coded data
    qsizetype firstScan = 0; // offset of the first scan's marker
};

// Reads markers up to the first scan. Empty when the file is no JPEG or a marker is damaged.
// The first scan's own header is read only for sequential files; a progressive file's scans
// are read one after another by the progressive decoder.
std::optional<JpegHeader> ReadJpegHeader(const QByteArray& file);

// Whether our decoders take the picture: baseline (one scan of every component) or
// progressive, Huffman coded, grey or YCbCr with chroma at 1 x 1 and luma at most 2 x 2,
// every quantisation table defined. Others (CMYK, stored RGB, unusual samplings) are left to
// the usual reader.
bool OurJpegDecodersTake(const JpegHeader& header);

// One scan's header, read by ReadJpegScanHeader.
struct JpegScanHeader {
    int count = 0;                  // components in the scan
    std::array<int, 4> component{}; // their indexes in the frame, in scan order
    std::array<int, 4> dcTable{};
    std::array<int, 4> acTable{};
    int start = 0; // the band of zigzag positions the scan carries
    int end = 63;
    int high = 0;       // successive approximation: the bit sent before, or 0
    int low = 0;        // the bit this scan sends
    qsizetype data = 0; // offset of the entropy-coded data
};

// Reads the marker segments from pos (a marker) up to and with the next scan's header: tables
// and restart intervals defined on the way update `header`. Empty at the end of the picture,
// at a damaged marker, or at a scan naming a component the frame does not have.
std::optional<JpegScanHeader> ReadJpegScanHeader(const QByteArray& file, qsizetype pos,
                                                 JpegHeader& header);

// The ICC profile carried in the file's APP2 "ICC_PROFILE" segments, joined in their order;
// empty when there is none or a piece is missing.
QByteArray ReadJpegIccProfile(const QByteArray& file);

// The zigzag order of coefficients: zigzag position -> natural position.
extern const std::array<uint8_t, 64> kJpegZigzag;

} // namespace kavori
