#include "JpegFiles.h"
#include "imaging/FullJpeg.h"
#include "imaging/PictureLoader.h"
#include "imaging/ScaledJpeg.h"
#include "support/KavoriTest.h"
#include "support/PhotoLike.h"

using namespace kavori;
using namespace kavori::test;

namespace {

// Scans of every kind, for a frame of one component or three: interleaved and single DC scans
// sent over three bits, AC bands of odd widths refined in bands cut differently from the
// first ones, a band wholly outside the kept corners sent at full precision, chroma with and
// without a refinement.
std::vector<ProgressiveScan> finelyCutScans(bool colour)
{
    std::vector<ProgressiveScan> scans;
    if (colour) {
        scans = {{{0, 1, 2}, 0, 0, 0, 2}, {{0}, 0, 0, 2, 1}, {{1, 2}, 0, 0, 2, 1}};
    } else {
        scans = {{{0}, 0, 0, 0, 2}, {{0}, 0, 0, 2, 1}};
    }
    const std::vector<ProgressiveScan> luma = {
        {{0}, 1, 9, 0, 2}, {{0}, 10, 29, 0, 1}, {{0}, 30, 63, 0, 0},
        {{0}, 1, 9, 2, 1}, {{0}, 1, 29, 1, 0},
    };
    scans.insert(scans.end(), luma.begin(), luma.end());
    if (colour) {
        scans.push_back({{1}, 1, 63, 0, 1});
        scans.push_back({{2}, 1, 63, 0, 0});
        scans.push_back({{1}, 1, 63, 1, 0});
        scans.push_back({{0, 1, 2}, 0, 0, 1, 0});
    } else {
        scans.push_back({{0}, 0, 0, 1, 0});
    }
    return scans;
}

// Spectral selection only: every value at full precision, the bands cut at the edges of the
// kept corners.
std::vector<ProgressiveScan> bandsOnly(bool colour)
{
    std::vector<ProgressiveScan> scans = {
        {colour ? std::vector<int>{0, 1, 2} : std::vector<int>{0}, 0, 0, 0, 0},
        {{0}, 1, 4, 0, 0},
        {{0}, 5, 24, 0, 0},
        {{0}, 25, 63, 0, 0}};
    if (colour) {
        scans.push_back({{1}, 1, 63, 0, 0});
        scans.push_back({{2}, 1, 63, 0, 0});
    }
    return scans;
}

// The first scan of a file with the given band start and bit sent before: its header and data.
QByteArray scanWhere(const QByteArray& file, int start, int high)
{
    for (qsizetype at = file.indexOf(QByteArray("\xFF\xDA", 2)); at > 0;
         at = file.indexOf(QByteArray("\xFF\xDA", 2), at + 2)) {
        const int count = uchar(file[at + 4]);
        const qsizetype band = at + 5 + 2 * count;
        if (uchar(file[band]) != start || (uchar(file[band + 2]) >> 4) != high)
            continue;
        qsizetype end = band + 3;
        while (end + 1 < file.size() && !(uchar(file[end]) == 0xFF && file[end + 1] != 0 &&
                                          (uchar(file[end + 1]) & 0xF8) != 0xD0))
            ++end;
        return file.mid(at, end - at);
    }
    return {};
}

QByteArray lastScanCut(const QByteArray& file)
{
    return file.left(file.lastIndexOf(QByteArray("\xFF\xDA", 2)));
}

} // namespace

class ProgressiveJpegTest : public KavoriTest {};

// A progressive file holds the same coefficients as the baseline file it was made from, so at
// every scale, sampling, scan script and restart interval its picture is the baseline one to
// the bit; the picture loader takes the same path for both.
TEST_F(ProgressiveJpegTest, SameCoefficientsGiveTheBaselinePictureBitForBit)
{
    struct Case {
        const char* name;
        JpegLayout layout;
    };
    const QList<Case> cases = {
        {"4:2:0", {2, 2}},
        {"4:2:2", {2, 1}},
        {"4:4:4", {1, 1}},
        {"grey", {1, 1, true}},
    };
    // An odd size leaves partial blocks and MCUs at the right and bottom edges.
    const QImage picture = PhotoLike(203, 117, 4);
    for (const Case& c : cases) {
        const QByteArray baseline = EncodeJpeg(picture, c.layout);
        const bool colour = !c.layout.grey;
        struct Script {
            const char* name;
            std::vector<ProgressiveScan> scans;
        };
        const QList<Script> scripts = {
            {"usual", {}}, {"finely cut", finelyCutScans(colour)}, {"bands", bandsOnly(colour)}};
        for (const Script& script : scripts) {
            for (const int restarts : {0, 3}) {
                const QByteArray progressive = MakeProgressive(baseline, script.scans, restarts);
                ASSERT_TRUE(progressive.contains(QByteArray("\xFF\xC2", 2)));
                for (const int denominator : {2, 4, 8}) {
                    const QImage ours = DecodeScaledJpeg(progressive, denominator);
                    ASSERT_FALSE(ours.isNull()) << c.name << " " << script.name;
                    EXPECT_EQ(ours, DecodeScaledJpeg(baseline, denominator, 1))
                        << c.name << ", " << script.name << " scans, restarts " << restarts
                        << ", 1/" << denominator;
                }
                EXPECT_EQ(DecodeJpegAtSize(progressive, QSize(61, 35)),
                          DecodeJpegAtSize(baseline, QSize(61, 35)))
                    << c.name << " " << script.name;
                const QImage full = DecodeFullJpeg(progressive);
                ASSERT_FALSE(full.isNull()) << c.name << " " << script.name;
                EXPECT_EQ(full, DecodeFullJpeg(baseline, 1))
                    << c.name << ", " << script.name << " scans, restarts " << restarts
                    << ", full size";
            }
        }
        const QString path =
            writeFile(QStringLiteral("progressive.jpg"), MakeProgressive(baseline));
        const QString basePath = writeFile(QStringLiteral("baseline.jpg"), baseline);
        EXPECT_EQ(LoadPicture(path, QSize(90, 90)), LoadPicture(basePath, QSize(90, 90))) << c.name;
        EXPECT_EQ(LoadPicture(path), LoadPicture(basePath)) << c.name;
    }
    // Large enough for later scans of a component to follow earlier ones block by block on
    // other cores: still the baseline picture, every time.
    const QByteArray large = EncodeJpeg(PhotoLike(1600, 1200, 8), {});
    const QByteArray progressive = MakeProgressive(large);
    const QImage expected = DecodeScaledJpeg(large, 2, 1);
    const QImage expectedFull = DecodeFullJpeg(large, 1);
    for (int run = 0; run < 3; ++run) {
        EXPECT_EQ(DecodeScaledJpeg(progressive, 2), expected) << "run " << run;
        EXPECT_EQ(DecodeFullJpeg(progressive), expectedFull) << "run " << run;
    }
}

// A component's quantisation table is the one in force at its first scan. A file that
// redefines the chroma table between the luma's first scan and the chroma's is left to the
// usual reader (our blocks would be transformed with the old table); redefined once every
// component has been sent, the new table changes nothing, and ours decodes it as before.
TEST_F(ProgressiveJpegTest, TablesRedefinedBetweenScansAreTheOnesOfEachComponentsFirstScan)
{
    const QByteArray baseline = EncodeJpeg(PhotoLike(64, 48, 5), {2, 2});
    const std::vector<ProgressiveScan> script = {{{0}, 0, 0, 0, 0},
                                                 {{1, 2}, 0, 0, 0, 0},
                                                 {{0}, 1, 63, 0, 0},
                                                 {{1}, 1, 63, 0, 0},
                                                 {{2}, 1, 63, 0, 0}};
    const QByteArray progressive = MakeProgressive(baseline, script);
    QByteArray table("\xFF\xDB\x00\x43\x01", 5); // table 1, 8-bit values
    for (int i = 0; i < 64; ++i)
        table += char(1 + i);
    const auto beforeScan = [&](int n) {
        qsizetype at = -2;
        for (int i = 0; i <= n; ++i)
            at = progressive.indexOf(QByteArray("\xFF\xDA", 2), at + 2);
        return QByteArray(progressive).insert(at, table);
    };

    const QByteArray early = beforeScan(1);
    EXPECT_TRUE(DecodeScaledJpeg(early, 2).isNull());
    EXPECT_TRUE(DecodeFullJpeg(early).isNull());
    const QString path = writeFile(QStringLiteral("early.jpg"), early);
    const QImage read = LoadPicture(path);
    ASSERT_FALSE(read.isNull());
    EXPECT_NE(read, LoadPicture(writeFile(QStringLiteral("plain.jpg"), baseline)));

    const QByteArray late = beforeScan(3);
    EXPECT_EQ(DecodeScaledJpeg(late, 2), DecodeScaledJpeg(baseline, 2, 1));
    EXPECT_EQ(DecodeFullJpeg(late), DecodeFullJpeg(baseline, 1));
}

// A file still arriving shows what has arrived: without its last scan (the finest bits of the
// luma) an eighth, made of DC values alone, is already final, and a half is close. Cut
// anywhere or with bits flipped, a file gives the same picture on every decode or none, of the
// right size, never a crash.
TEST_F(ProgressiveJpegTest, CutAndDamagedFilesGiveWhatArrivedTheSameEveryTime)
{
    const QImage picture = PhotoLike(96, 64, 9);
    const QByteArray baseline = EncodeJpeg(picture, {});
    const QByteArray whole = MakeProgressive(baseline);
    const QByteArray arriving = lastScanCut(whole);
    EXPECT_EQ(DecodeScaledJpeg(arriving, 8), DecodeScaledJpeg(baseline, 8));
    const QImage half = DecodeScaledJpeg(arriving, 2);
    const QImage full = DecodeScaledJpeg(baseline, 2);
    ASSERT_EQ(half.size(), full.size());
    EXPECT_NE(half, full);
    int largest = 0;
    for (int y = 0; y < half.height(); ++y)
        for (int x = 0; x < half.width(); ++x)
            largest = qMax(largest, qAbs(qGreen(half.pixel(x, y)) - qGreen(full.pixel(x, y))));
    EXPECT_LT(largest, 24);

    for (const QByteArray& file : {whole, MakeProgressive(baseline, finelyCutScans(true), 2)}) {
        for (qsizetype cut = 0; cut < file.size(); cut += 29) {
            const QByteArray part = file.left(cut);
            const QImage first = DecodeScaledJpeg(part, 2);
            EXPECT_EQ(DecodeScaledJpeg(part, 2), first) << "cut at " << cut;
            const QImage full = DecodeFullJpeg(part);
            EXPECT_EQ(DecodeFullJpeg(part), full) << "cut at " << cut;
            EXPECT_EQ(full.isNull(), first.isNull()) << "cut at " << cut;
            if (!first.isNull()) {
                EXPECT_EQ(first.size(), QSize(48, 32)) << "cut at " << cut;
            }
            // Once the first scan's header is in, there is a picture.
            if (cut > file.indexOf(QByteArray("\xFF\xDA", 2)) + 20) {
                EXPECT_FALSE(first.isNull()) << "cut at " << cut;
            }
        }
        for (int seed = 1; seed <= 300; ++seed) {
            QByteArray flipped = file;
            const qsizetype at = (qsizetype(seed) * 7919) % flipped.size();
            flipped[at] = char(flipped[at] ^ (1 << (seed % 8)));
            const QImage full = DecodeFullJpeg(flipped);
            EXPECT_EQ(DecodeFullJpeg(flipped), full) << "flip at " << at;
            for (const int denominator : {2, 8}) {
                const QImage image = DecodeScaledJpeg(flipped, denominator);
                EXPECT_EQ(DecodeScaledJpeg(flipped, denominator), image) << "flip at " << at;
                // A flip in the frame header may change the size; one in the data never does.
                if (!image.isNull() && at > file.indexOf(QByteArray("\xFF\xDA", 2))) {
                    EXPECT_EQ(image.size(), QSize(96 / denominator, 64 / denominator));
                }
            }
        }
    }
    // A file of endless scans is read up to a limit: a scan after the hundredth changes
    // nothing. The usual script's DC refinement (which changes nothing when repeated) a
    // hundred and twenty times, then the last scan.
    const QByteArray dcRefinement = scanWhere(whole, 0, 1);
    ASSERT_FALSE(dcRefinement.isEmpty());
    const QByteArray lastScan = whole.mid(arriving.size(), whole.size() - 2 - arriving.size());
    const QByteArray many = arriving + dcRefinement.repeated(120);
    const QImage capped = DecodeScaledJpeg(many + lastScan + QByteArray("\xFF\xD9", 2), 2);
    EXPECT_EQ(capped, DecodeScaledJpeg(many, 2));
    EXPECT_NE(DecodeScaledJpeg(arriving + dcRefinement + lastScan, 2), capped);

    // Loading a damaged progressive file gives a picture of the shape asked for.
    const QString path = writeFile(QStringLiteral("cut.jpg"), whole.left(whole.size() / 2));
    EXPECT_EQ(LoadPicture(path, QSize(48, 48)).size(), QSize(48, 32));
}
