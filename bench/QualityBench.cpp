// Quality of the scaled JPEG decoder: PSNR (R, G and B, 8 bits) of a photo decoded by
// LoadPicture for a 1920 x 1080 screen and for a 160 x 120 thumbnail, and of libjpeg's own
// DCT-scaled decode brought to the same size, each against the full decode averaged down to that
// size by area. Six generated 4000 x 3000 photo-like JPEGs (q90) always; the shared corpus
// (make-corpus.sh DIR, then KAVORI_CORPUS=DIR) too when it is set. The counters are means over
// the photos, in dB; "worst_gap_db" is the least, over the photos, of ours minus the better of
// libjpeg's two.
#include "imaging/PictureLoader.h"
#include "support/PhotoLike.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QTemporaryDir>

#include "Corpus.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <vector>

#include <jpeglib.h>

namespace {

// One target pixel's share of one source pixel along an axis, in units where a source pixel is
// `to` long and a target pixel `from` long, so that the shares are whole numbers.
struct Share {
    int source;
    qint64 weight;
};

std::vector<std::vector<Share>> areaShares(int from, int to)
{
    std::vector<std::vector<Share>> shares(static_cast<size_t>(to));
    for (int t = 0; t < to; ++t) {
        const qint64 begin = qint64(t) * from;
        const qint64 end = qint64(t + 1) * from;
        for (int s = int(begin / to); qint64(s) * to < end; ++s) {
            const qint64 overlap =
                std::min<qint64>(qint64(s + 1) * to, end) - std::max<qint64>(qint64(s) * to, begin);
            if (overlap > 0)
                shares[size_t(t)].push_back({s, overlap});
        }
    }
    return shares;
}

// The reference filter: each target pixel is the exact mean of the source area it covers, a
// source pixel cut by its edge counting by the part inside, rounded once at the end.
QImage areaScaled(const QImage& picture, const QSize& size)
{
    const QImage source = picture.convertToFormat(QImage::Format_RGB32);
    const int w = size.width();
    const int h = size.height();
    const auto across = areaShares(source.width(), w);
    const auto down = areaShares(source.height(), h);
    std::vector<qint64> sums(size_t(w) * size_t(h) * 3, 0);
    std::vector<qint64> row(size_t(w) * 3);
    // Which target rows each source row feeds, and by how much.
    std::vector<std::vector<Share>> feeds(static_cast<size_t>(source.height()));
    for (int t = 0; t < h; ++t)
        for (const Share& share : down[size_t(t)])
            feeds[size_t(share.source)].push_back({t, share.weight});
    for (int y = 0; y < source.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(source.constScanLine(y));
        for (int x = 0; x < w; ++x) {
            qint64 r = 0, g = 0, b = 0;
            for (const Share& share : across[size_t(x)]) {
                const QRgb c = line[share.source];
                r += qRed(c) * share.weight;
                g += qGreen(c) * share.weight;
                b += qBlue(c) * share.weight;
            }
            row[size_t(x) * 3] = r;
            row[size_t(x) * 3 + 1] = g;
            row[size_t(x) * 3 + 2] = b;
        }
        for (const Share& feed : feeds[size_t(y)]) {
            qint64* target = sums.data() + size_t(feed.source) * size_t(w) * 3;
            for (size_t i = 0; i < row.size(); ++i)
                target[i] += row[i] * feed.weight;
        }
    }
    const qint64 area = qint64(source.width()) * source.height();
    QImage result(size, QImage::Format_RGB32);
    for (int y = 0; y < h; ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        const qint64* s = sums.data() + size_t(y) * size_t(w) * 3;
        for (int x = 0; x < w; ++x, s += 3)
            line[x] = qRgb(int((s[0] + area / 2) / area), int((s[1] + area / 2) / area),
                           int((s[2] + area / 2) / area));
    }
    return result;
}

double psnr(const QImage& picture, const QImage& reference)
{
    const QImage a = picture.convertToFormat(QImage::Format_RGB32);
    double squares = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto* p = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* q = reinterpret_cast<const QRgb*>(reference.constScanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            const int dr = qRed(p[x]) - qRed(q[x]);
            const int dg = qGreen(p[x]) - qGreen(q[x]);
            const int db = qBlue(p[x]) - qBlue(q[x]);
            squares += dr * dr + dg * dg + db * db;
        }
    }
    const double mse = squares / (3.0 * a.width() * a.height());
    return mse == 0 ? std::numeric_limits<double>::infinity()
                    : 10 * std::log10(255.0 * 255.0 / mse);
}

// libjpeg's decode at eighths/8 of the full size, in RGB with its default (accurate) inverse
// DCT and smooth chroma upsampling, as Qt asks for them. The files here are known good, so
// libjpeg's default error handling (ending the program) is enough, as in the tests.
QImage libjpegDecode(const QByteArray& file, int eighths)
{
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(file.constData()),
                 static_cast<unsigned long>(file.size()));
    jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_RGB;
    info.scale_num = unsigned(eighths);
    info.scale_denom = 8;
    jpeg_start_decompress(&info);
    QImage image(int(info.output_width), int(info.output_height), QImage::Format_RGB888);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = image.scanLine(int(info.output_scanline));
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    return image;
}

QSize libjpegSize(const QSize& full, int eighths)
{
    // libjpeg rounds scaled sizes up.
    return {(full.width() * eighths + 7) / 8, (full.height() * eighths + 7) / 8};
}

// The smallest scale among `choices` (eighths, smallest first) whose decode covers the target.
int coveringEighths(const QSize& full, const QSize& target, std::initializer_list<int> choices)
{
    for (const int eighths : choices) {
        const QSize s = libjpegSize(full, eighths);
        if (s.width() >= target.width() && s.height() >= target.height())
            return eighths;
    }
    return 8;
}

QStringList photoLikeJpegs()
{
    static QTemporaryDir dir;
    QStringList files;
    for (int seed = 1; seed <= 6; ++seed) {
        const QString path = dir.path() + QStringLiteral("/quality_%1.jpg").arg(seed);
        if (!QFile::exists(path))
            kavori::test::PhotoLike(4000, 3000, seed).save(path, "JPEG", 90);
        files << path;
    }
    return files;
}

void measureQuality(benchmark::State& state, const QStringList& files, const QSize& screen)
{
    if (files.isEmpty()) {
        state.SkipWithError("set KAVORI_CORPUS to a corpus folder");
        return;
    }
    double ours = 0, nearest = 0, sameScale = 0;
    double worstGap = std::numeric_limits<double>::infinity();
    int nearestEighths = 0, sameEighths = 0;
    for (auto _ : state) {
        for (const QString& path : files) {
            QFile in(path);
            if (!in.open(QIODevice::ReadOnly)) {
                state.SkipWithError("cannot read a photo");
                return;
            }
            const QByteArray file = in.readAll();
            QImageReader reader(path);
            const QImage full = reader.read();
            const QSize target = full.size().scaled(screen, Qt::KeepAspectRatio);
            const QImage reference = areaScaled(full, target);
            const QImage mine = kavori::LoadPicture(path, screen);
            if (mine.size() != target) {
                state.SkipWithError("our decode is not of the target size");
                return;
            }
            // libjpeg at the smallest of its eighths that covers the target, and at the power
            // of two that ours decodes at.
            nearestEighths = coveringEighths(full.size(), target, {1, 2, 3, 4, 5, 6, 7, 8});
            sameEighths = coveringEighths(full.size(), target, {1, 2, 4, 8});
            const double p = psnr(mine, reference);
            const double n =
                psnr(areaScaled(libjpegDecode(file, nearestEighths), target), reference);
            const double s =
                sameEighths == nearestEighths
                    ? n
                    : psnr(areaScaled(libjpegDecode(file, sameEighths), target), reference);
            ours += p;
            nearest += n;
            sameScale += s;
            worstGap = std::min(worstGap, p - std::max(n, s));
        }
    }
    const double count = double(files.size()) * double(state.iterations());
    state.counters["photos"] = double(files.size());
    state.counters["psnr_ours"] = ours / count;
    state.counters["psnr_libjpeg_nearest"] = nearest / count;
    state.counters["nearest_eighths"] = nearestEighths;
    state.counters["psnr_libjpeg_same_scale"] = sameScale / count;
    state.counters["same_eighths"] = sameEighths;
    state.counters["worst_gap_db"] = worstGap;
}

void BM_QualityPhotoLikeScreen(benchmark::State& state)
{
    measureQuality(state, photoLikeJpegs(), QSize(1920, 1080));
}

void BM_QualityPhotoLikeThumbnail(benchmark::State& state)
{
    measureQuality(state, photoLikeJpegs(), QSize(160, 120));
}

void BM_QualityCorpusScreen(benchmark::State& state)
{
    measureQuality(state, CorpusPhotos(), QSize(1920, 1080));
}

void BM_QualityCorpusThumbnail(benchmark::State& state)
{
    measureQuality(state, CorpusPhotos(), QSize(160, 120));
}

} // namespace

// One pass each: the figures are the counters, not the times.
BENCHMARK(BM_QualityPhotoLikeScreen)->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK(BM_QualityPhotoLikeThumbnail)->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK(BM_QualityCorpusScreen)->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK(BM_QualityCorpusThumbnail)->Unit(benchmark::kSecond)->Iterations(1);
