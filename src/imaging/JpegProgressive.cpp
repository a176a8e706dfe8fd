#include "JpegProgressive.h"

#include "JpegEntropy.h"
#include "runtime/ParallelRun.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <limits>
#include <memory>
#include <mutex>
#include <thread>

namespace kavori {

namespace {

using namespace jpeg;

// Where each component's blocks sit among the layout's blocks.
struct Geometry {
    int mcusX = 0;
    int mcusY = 0;
    int blocksPerMcu = 1;
    std::array<int, 4> h{}; // sampling; 1 x 1 in a frame of one component
    std::array<int, 4> v{};
    std::array<int, 4> offset{};  // the component's first block in an MCU
    std::array<int, 4> blocksX{}; // the component's own blocks, as a scan of it alone walks them
    std::array<int, 4> blocksY{};
};

Geometry geometryOf(const JpegHeader& header, const JpegScanLayout& layout)
{
    Geometry g;
    g.mcusX = layout.mcusX;
    g.mcusY = layout.mcusY;
    g.blocksPerMcu = layout.blocksPerMcu;
    const bool single = header.components.size() == 1;
    int hMax = 1;
    int vMax = 1;
    for (const JpegComponent& c : header.components) {
        hMax = std::max(hMax, single ? 1 : c.h);
        vMax = std::max(vMax, single ? 1 : c.v);
    }
    int offset = 0;
    for (size_t i = 0; i < header.components.size(); ++i) {
        g.h[i] = single ? 1 : header.components[i].h;
        g.v[i] = single ? 1 : header.components[i].v;
        g.offset[i] = offset;
        offset += g.h[i] * g.v[i];
        const int width = (header.width * g.h[i] + hMax - 1) / hMax;
        const int height = (header.height * g.v[i] + vMax - 1) / vMax;
        g.blocksX[i] = (width + 7) / 8;
        g.blocksY[i] = (height + 7) / 8;
    }
    return g;
}

// The blocks every scan adds to.
struct Coefficients {
    JpegBlocks values;
    ScratchBuffer masks; // a block's AC positions that are non-zero, bit k for zigzag position k
    // Of each component, zigzag position -> index among the kept values; the spare for the
    // others.
    int8_t outIndex[4][64]{};
    int16_t* block(qint64 i) { return values.block(i); }
    uint64_t* mask(qint64 i) { return masks.as<uint64_t>() + i; }
};

struct ScanTask {
    JpegScanHeader header;
    int restartInterval = 0;
    const uint8_t* begin = nullptr; // the entropy-coded data in the file
    const uint8_t* end = nullptr;
    std::array<const Huffman*, 4> tables{}; // of each scan component: DC or AC, as the scan needs
    std::vector<size_t> after;              // the tasks that must be done first
    // Earlier AC scans of the same component: they walk the same blocks in the same order, so
    // this one may follow them block by block.
    std::vector<size_t> behind;
    // The bytes of this scan and of the longest chain of scans waiting on it: the scan to
    // start first, the one ahead of the most work.
    qint64 chainBytes = 0;
    bool skipped = false;
};

inline int readBit(Bits& b)
{
    b.ensure();
    const int bit = int(b.window() >> 63);
    b.skip(1);
    return bit;
}

// The first bits of the DC values.
struct DcFirst {
    Bits& b;
    Coefficients& co;
    const ScanTask& task;
    int predictions[4] = {};
    void reset() { std::fill(std::begin(predictions), std::end(predictions), 0); }
    bool operator()(qint64 index, int i)
    {
        b.ensure();
        const int size = decodeSymbol(*task.tables[size_t(i)], b);
        if (size < 0 || size > 11)
            return false;
        const int p = std::clamp(predictions[i] + receiveExtend(b, size), -32768, 32767);
        predictions[i] = p;
        co.block(index)[0] = int16_t(std::clamp(p * (1 << task.header.low), -32768, 32767));
        return true;
    }
};

// One more bit of the DC values.
struct DcRefine {
    Bits& b;
    Coefficients& co;
    const ScanTask& task;
    void reset() {}
    bool operator()(qint64 index, int)
    {
        if (readBit(b))
            co.block(index)[0] = int16_t(co.block(index)[0] | (1 << task.header.low));
        return true;
    }
};

// The first bits of a band of AC values; a run of blocks with nothing in the band is sent once.
struct AcFirst {
    Bits& reader;
    Coefficients& co;
    const ScanTask& task;
    int eobRun = 0;
    void reset() { eobRun = 0; }
    bool operator()(qint64 index, int)
    {
        if (eobRun > 0) {
            --eobRun;
            return true;
        }
        LocalBits local(reader);
        Bits& b = local.bits;
        const Huffman& table = *task.tables[0];
        const int end = task.header.end;
        const int low = task.header.low;
        int16_t* block = co.block(index);
        const int8_t* at = co.outIndex[task.header.component[0]];
        uint64_t mask = *co.mask(index);
        for (int k = task.header.start; k <= end;) {
            b.ensure();
            const int32_t fast = table.fastAc[b.window() >> (64 - kFastBits)];
            int value;
            if (fast) {
                k += (fast >> 8) & 15;
                b.skip(fast & 255);
                value = fast >> 16;
            } else {
                const int symbol = decodeSymbol(table, b);
                if (symbol < 0)
                    return false;
                const int run = symbol >> 4;
                const int size = symbol & 15;
                if (size == 0) {
                    if (run == 15) {
                        k += 16;
                        continue;
                    }
                    eobRun = (1 << run) - 1;
                    if (run) {
                        eobRun += int(b.window() >> (64 - run));
                        b.skip(run);
                    }
                    break;
                }
                k += run;
                value = receiveExtend(b, size);
            }
            if (k > end)
                return false;
            block[at[k]] = int16_t(value * (1 << low));
            mask |= uint64_t(1) << k;
            ++k;
        }
        *co.mask(index) = mask;
        return true;
    }
};

// One more bit of a band of AC values: a correction bit for each value already non-zero, and
// the values that become non-zero with this bit.
struct AcRefine {
    Bits& reader;
    Coefficients& co;
    const ScanTask& task;
    int eobRun = 0;
    void reset() { eobRun = 0; }
    bool operator()(qint64 index, int)
    {
        LocalBits local(reader);
        Bits& b = local.bits;
        const Huffman& table = *task.tables[0];
        const int end = task.header.end;
        const int one = 1 << task.header.low;
        int16_t* block = co.block(index);
        const int8_t* at = co.outIndex[task.header.component[0]];
        uint64_t mask = *co.mask(index);
        // Values outside the kept ones land in the spare: their bits are read all the same.
        const auto correct = [&](int k) {
            int16_t& value = block[at[k]];
            if (readBit(b) && (value & one) == 0)
                value = int16_t(value >= 0 ? value + one : value - one);
        };
        int k = task.header.start;
        if (eobRun == 0) {
            for (; k <= end; ++k) {
                b.ensure();
                const int symbol = decodeSymbol(table, b);
                if (symbol < 0)
                    return false;
                int run = symbol >> 4;
                const int size = symbol & 15;
                int value = 0;
                if (size) {
                    if (size != 1)
                        return false;
                    value = (b.window() >> 63) ? one : -one;
                    b.skip(1);
                } else if (run != 15) {
                    eobRun = 1 << run;
                    if (run) {
                        eobRun += int(b.window() >> (64 - run));
                        b.skip(run);
                    }
                    break;
                }
                // Past the values already non-zero, each with its correction bit, and `run`
                // zero ones: the next zero one is where the new value goes.
                for (; k <= end; ++k) {
                    if ((mask >> k) & 1)
                        correct(k);
                    else if (--run < 0)
                        break;
                }
                if (value) {
                    if (k > end)
                        return false;
                    block[at[k]] = int16_t(value);
                    mask |= uint64_t(1) << k;
                }
            }
        }
        if (eobRun > 0) {
            if (k <= end) {
                const uint64_t band = (~uint64_t(0) << k) &
                                      (end == 63 ? ~uint64_t(0) : (uint64_t(1) << (end + 1)) - 1);
                for (uint64_t rest = mask & band; rest; rest &= rest - 1)
                    correct(__builtin_ctzll(rest));
            }
            --eobRun;
        }
        *co.mask(index) = mask;
        return true;
    }
};

// Walks the scan's blocks in its order (a component's own blocks row by row for a scan of one
// component, MCUs for an interleaved one), stopping at damage or where the data ends.
// How far each scan has come, in units of its walk; kDone once it stopped.
using Progress = std::vector<std::atomic<qint64>>;
constexpr qint64 kDone = std::numeric_limits<qint64>::max();

template <typename Decoder>
void walk(const ScanTask& task, const Geometry& g, const Unstuffed& data, Bits& b, Decoder& decode,
          Progress& progress, std::atomic<qint64>& mine)
{
    const JpegScanHeader& s = task.header;
    const uint64_t dataBits = uint64_t(data.size) * 8;
    size_t restart = 0;
    int untilRestart = task.restartInterval;
    qint64 unit = 0;
    // Before each unit (an MCU, or a block in a scan of one component): false to stop.
    const auto nextUnit = [&]() {
        if (b.pos() > dataBits)
            return false; // the data ended inside the unit before
        mine.store(unit, std::memory_order_release);
        for (const size_t earlier : task.behind)
            while (progress[earlier].load(std::memory_order_acquire) <= unit)
                std::this_thread::yield();
        ++unit;
        if (task.restartInterval == 0)
            return true;
        if (untilRestart-- > 0)
            return true;
        untilRestart = task.restartInterval - 1;
        if (restart >= data.restarts.size() || b.pos() > data.restarts[restart] * 8)
            return false;
        b.seek(data.restarts[restart++] * 8);
        decode.reset();
        return true;
    };
    if (s.count == 1) {
        const auto c = size_t(s.component[0]);
        std::vector<qint64> columns(size_t(g.blocksX[c]));
        for (int bx = 0; bx < g.blocksX[c]; ++bx)
            columns[size_t(bx)] = qint64(bx / g.h[c]) * g.blocksPerMcu + bx % g.h[c];
        for (int by = 0; by < g.blocksY[c]; ++by) {
            const qint64 row = qint64(by / g.v[c]) * g.mcusX * g.blocksPerMcu + g.offset[c] +
                               (by % g.v[c]) * g.h[c];
            for (const qint64 column : columns)
                if (!nextUnit() || !decode(row + column, 0))
                    return;
        }
        return;
    }
    const qint64 mcus = qint64(g.mcusX) * g.mcusY;
    for (qint64 mcu = 0; mcu < mcus; ++mcu) {
        if (!nextUnit())
            return;
        for (int i = 0; i < s.count; ++i) {
            const auto c = size_t(s.component[size_t(i)]);
            const qint64 first = mcu * g.blocksPerMcu + g.offset[c];
            for (int k = 0; k < g.h[c] * g.v[c]; ++k)
                if (!decode(first + k, i))
                    return;
        }
    }
}

void runScan(const ScanTask& task, const Geometry& g, Coefficients& co, Progress& progress,
             std::atomic<qint64>& mine)
{
    Unstuffed data;
    if (!unstuff(task.begin, task.end, data))
        return;
    Bits b(data.data(), 0);
    const JpegScanHeader& s = task.header;
    if (s.start == 0 && s.high == 0) {
        DcFirst decode{b, co, task};
        walk(task, g, data, b, decode, progress, mine);
    } else if (s.start == 0) {
        DcRefine decode{b, co, task};
        walk(task, g, data, b, decode, progress, mine);
    } else if (s.high == 0) {
        AcFirst decode{b, co, task};
        walk(task, g, data, b, decode, progress, mine);
    } else {
        AcRefine decode{b, co, task};
        walk(task, g, data, b, decode, progress, mine);
    }
}

// Where a scan's entropy-coded data ends: at the first marker that is not a restart marker.
const uint8_t* dataEnd(const uint8_t* p, const uint8_t* end)
{
    while (p < end) {
        const auto* ff = static_cast<const uint8_t*>(std::memchr(p, 0xFF, size_t(end - p)));
        if (!ff)
            return end;
        const uint8_t* q = ff + 1;
        while (q < end && *q == 0xFF)
            ++q;
        if (q == end)
            return end;
        if (*q != 0x00 && (*q < 0xD0 || *q > 0xD7))
            return ff;
        p = q + 1;
    }
    return end;
}

// Whether this decoder takes the scan: a band that makes sense, AC bands of one component,
// interleaved components in frame order.
bool usable(const JpegScanHeader& s, const JpegHeader& header)
{
    if (s.start > s.end || s.end > 63 || (s.start == 0 && s.end != 0) ||
        (s.start > 0 && s.count != 1) || s.high > 13 || s.low > 13 ||
        (s.high != 0 && s.low != s.high - 1))
        return false;
    for (int i = 0; i < s.count; ++i) {
        if (i > 0 && s.component[size_t(i)] <= s.component[size_t(i - 1)])
            return false;
        if (s.component[size_t(i)] >= int(header.components.size()))
            return false;
    }
    return true;
}

bool overlaps(const JpegScanHeader& a, const JpegScanHeader& b)
{
    for (int i = 0; i < a.count; ++i)
        for (int j = 0; j < b.count; ++j)
            if (a.component[size_t(i)] == b.component[size_t(j)])
                return true;
    return false;
}

// Every scan's header and tables, up to the end of the picture or the first scan this decoder
// cannot take. Tables are built once per scan that needs them.
std::vector<ScanTask> readScans(const QByteArray& file, const JpegHeader& header,
                                std::vector<std::unique_ptr<Huffman>>& huffmans)
{
    std::vector<ScanTask> tasks;
    JpegHeader tables = header;
    const auto* begin = reinterpret_cast<const uint8_t*>(file.constData());
    const uint8_t* fileEnd = begin + file.size();
    qsizetype pos = header.firstScan;
    // Encoders send about ten scans; a file of thousands of tiny ones, each walking every
    // block, would take minutes. What the first ones give is shown.
    constexpr size_t kMaxScans = 100;
    std::array<bool, 4> seen{}; // components a scan has carried
    while (tasks.size() < kMaxScans) {
        std::optional<JpegScanHeader> scan = ReadJpegScanHeader(file, pos, tables);
        if (!scan)
            break;
        if (!usable(*scan, header))
            break;
        // A component's quantisation table is the one in force at its first scan; one
        // redefined between the header and then is not the table the blocks are transformed
        // with, so such a file is left to the usual reader.
        for (int i = 0; i < scan->count; ++i) {
            const auto c = size_t(scan->component[size_t(i)]);
            const auto slot = size_t(header.components[c].quantTable);
            if (!seen[c] && tables.quant[slot] != header.quant[slot])
                return {};
            seen[c] = true;
        }
        ScanTask task;
        task.header = *scan;
        task.restartInterval = tables.restartInterval;
        task.begin = begin + scan->data;
        task.end = dataEnd(task.begin, fileEnd);
        pos = task.end - begin;
        const bool needsTables = scan->start > 0 || scan->high == 0;
        bool ok = true;
        for (int i = 0; i < scan->count && needsTables; ++i) {
            const int slot = scan->start > 0 ? scan->acTable[size_t(i)] : scan->dcTable[size_t(i)];
            if (slot > 3) {
                ok = false;
                break;
            }
            const JpegHuffmanCodes& codes =
                scan->start > 0 ? tables.ac[size_t(slot)] : tables.dc[size_t(slot)];
            huffmans.push_back(std::make_unique<Huffman>());
            ok = buildHuffman(codes, scan->start > 0, *huffmans.back());
            if (!ok)
                break;
            task.tables[size_t(i)] = huffmans.back().get();
        }
        if (!ok)
            break;
        tasks.push_back(std::move(task));
        if (pos == file.size())
            break;
    }
    return tasks;
}

} // namespace

JpegBlocks DecodeProgressiveJpeg(const QByteArray& file, const JpegHeader& header,
                                 const JpegScanLayout& layout,
                                 const std::array<JpegKeptRows, 4>& kept)
{
    if (!header.progressive || header.height == 0 || header.width == 0 ||
        layout.blocksPerMcu == 0 || header.components.size() > kept.size() ||
        header.firstScan <= 0 || header.firstScan >= file.size())
        return {};
    // Every block's DC value takes at least a bit of a first DC scan; a header promising more
    // blocks than the file has bits is damaged.
    const qint64 totalBlocks = layout.totalBlocks();
    if (totalBlocks > qint64(file.size()) * 8)
        return {};
    std::vector<std::unique_ptr<Huffman>> huffmans;
    std::vector<ScanTask> tasks = readScans(file, header, huffmans);
    if (tasks.empty())
        return {};

    Coefficients co;
    int lastKept[4] = {}; // of each component, the highest zigzag position it keeps
    int sizes[10] = {};   // of each block of an MCU, its kept values and the spare
    for (size_t c = 0; c < header.components.size(); ++c) {
        const unsigned rows = kept[c];
        const int count = __builtin_popcount(rows);
        // Where row or column r lands among the kept ones.
        const auto rank = [rows](int r) { return __builtin_popcount(rows & ((1u << r) - 1)); };
        for (int k = 0; k < 64; ++k) {
            const int row = kJpegZigzag[size_t(k)] / 8;
            const int column = kJpegZigzag[size_t(k)] % 8;
            const bool keptHere = (rows >> row & 1) && (rows >> column & 1);
            co.outIndex[c][k] = int8_t(keptHere ? rank(row) * count + rank(column) : count * count);
            if (keptHere)
                lastKept[c] = k;
        }
    }
    for (int i = 0; i < layout.blocksPerMcu; ++i) {
        const int count = __builtin_popcount(unsigned(kept[layout.blockComponent[size_t(i)]]));
        sizes[i] = count * count + 1;
    }
    // A band wholly outside the kept corner is skipped, unless a later refinement of a band
    // overlapping it is decoded: that needs to know which of its values are non-zero.
    for (size_t i = tasks.size(); i-- > 0;) {
        const JpegScanHeader& s = tasks[i].header;
        if (s.start <= lastKept[size_t(s.component[0])])
            continue;
        bool needed = false;
        for (size_t j = i + 1; j < tasks.size() && !needed; ++j) {
            const JpegScanHeader& later = tasks[j].header;
            needed = !tasks[j].skipped && later.start > 0 && later.high != 0 &&
                     later.component[0] == s.component[0] && later.start <= s.end &&
                     later.end >= s.start;
        }
        tasks[i].skipped = !needed;
    }
    tasks.erase(
        std::remove_if(tasks.begin(), tasks.end(), [](const ScanTask& t) { return t.skipped; }),
        tasks.end());
    // DC and AC values of a block are apart, but AC scans of one component share its masks:
    // a later one follows an earlier one block by block.
    for (size_t j = 0; j < tasks.size(); ++j) {
        for (size_t i = 0; i < j; ++i) {
            const bool dc = tasks[i].header.start == 0;
            if (dc != (tasks[j].header.start == 0) || !overlaps(tasks[i].header, tasks[j].header))
                continue;
            (dc ? tasks[j].after : tasks[j].behind).push_back(i);
        }
    }
    for (size_t i = tasks.size(); i-- > 0;) {
        ScanTask& task = tasks[i];
        task.chainBytes += task.end - task.begin;
        for (const size_t j : task.after)
            tasks[j].chainBytes = std::max(tasks[j].chainBytes, task.chainBytes);
        for (const size_t j : task.behind)
            tasks[j].chainBytes = std::max(tasks[j].chainBytes, task.chainBytes);
    }

    co.values = JpegBlocks(totalBlocks, sizes, layout.blocksPerMcu);
    co.masks = ScratchBuffer(size_t(totalBlocks) * sizeof(uint64_t));
    if (!co.values.data() || !co.masks.data())
        return {};
    std::memset(co.values.data(), 0, size_t(co.values.offset(totalBlocks)) * sizeof(int16_t));
    std::memset(co.masks.data(), 0, size_t(totalBlocks) * sizeof(uint64_t));

    const Geometry g = geometryOf(header, layout);
    // Each worker takes the scan ahead of the most work among those it can start: their
    // predecessors are done, or under way for a scan that follows them block by block.
    std::mutex mutex;
    std::condition_variable changed;
    enum State : uint8_t { Waiting, Running, Done };
    std::vector<State> states(tasks.size(), Waiting);
    Progress progress(tasks.size());
    for (std::atomic<qint64>& p : progress)
        p.store(-1);
    const int workers = std::min(int(tasks.size()), ParallelWidth());
    RunInParallel(workers, [&](int) {
        std::unique_lock<std::mutex> lock(mutex);
        for (;;) {
            size_t next = tasks.size();
            bool waiting = false;
            for (size_t i = 0; i < tasks.size(); ++i) {
                if (states[i] != Waiting)
                    continue;
                waiting = true;
                if (std::all_of(tasks[i].after.begin(), tasks[i].after.end(),
                                [&](size_t j) { return states[j] == Done; }) &&
                    std::all_of(tasks[i].behind.begin(), tasks[i].behind.end(),
                                [&](size_t j) { return states[j] != Waiting; }) &&
                    (next == tasks.size() || tasks[i].chainBytes > tasks[next].chainBytes))
                    next = i;
            }
            if (!waiting)
                return;
            if (next == tasks.size()) {
                changed.wait(lock);
                continue;
            }
            states[next] = Running;
            lock.unlock();
            runScan(tasks[next], g, co, progress, progress[next]);
            progress[next].store(kDone, std::memory_order_release);
            lock.lock();
            states[next] = Done;
            changed.notify_all();
        }
    });
    return std::move(co.values);
}

} // namespace kavori
