#include "ScratchMemory.h"

#include "platform/LargeMemory.h"

#include <QColorSpace>
#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kavori {

namespace {

// Buffers below this come from malloc's own pools quickly enough.
constexpr size_t kSmallest = size_t(256) << 10;
// A block is kept only while the system has this much more to hand out.
constexpr int64_t kKeepFloor = int64_t(512) << 20;

struct Block {
    void* data;
    size_t size;
};

bool isLarge(size_t size)
{
    return size >= kLargePageBytes;
}

Block allocate(size_t bytes)
{
    if (bytes >= kLargePageBytes) {
        const size_t size = (bytes + kLargePageBytes - 1) & ~(kLargePageBytes - 1);
        void* data = AllocateLargeBlock(size);
        return {data, data ? size : 0};
    }
    void* data = std::malloc(std::max<size_t>(bytes, 1));
    return {data, data ? bytes : 0};
}

void release(Block block)
{
    if (isLarge(block.size))
        FreeLargeBlock(block.data, block.size);
    else
        std::free(block.data);
}

class Stock {
public:
    // The smallest kept block that fits without wasting more than half of it.
    Block take(size_t bytes)
    {
        QMutexLocker lock(&mutex_);
        auto best = blocks_.end();
        for (auto it = blocks_.begin(); it != blocks_.end(); ++it)
            if (it->size >= bytes && it->size / 2 <= bytes &&
                (best == blocks_.end() || it->size < best->size))
                best = it;
        if (best == blocks_.end())
            return {nullptr, 0};
        const Block block = *best;
        blocks_.erase(best);
        held_ -= block.size;
        return block;
    }
    void give(Block block)
    {
        std::vector<Block> spare;
        const int64_t available = isLarge(block.size) ? AvailableMemoryBytes() : -1;
        {
            QMutexLocker lock(&mutex_);
            if (available >= 0 && available < kKeepFloor + int64_t(block.size)) {
                // Short of memory: everything goes back, not only what is over the limit.
                spare.swap(blocks_);
                spare.push_back(block);
                held_ = 0;
            } else {
                blocks_.push_back(block);
                held_ += block.size;
            }
            // Over the limit the oldest blocks go back to the system.
            while (held_ > kScratchStockBytes) {
                spare.push_back(blocks_.front());
                held_ -= blocks_.front().size;
                blocks_.erase(blocks_.begin());
            }
        }
        for (const Block& b : spare)
            release(b);
    }
    void releaseAll()
    {
        std::vector<Block> spare;
        {
            QMutexLocker lock(&mutex_);
            spare.swap(blocks_);
            held_ = 0;
        }
        for (const Block& b : spare)
            release(b);
    }
    size_t held()
    {
        QMutexLocker lock(&mutex_);
        return held_;
    }
    void noteImage(const void* pixels, bool live)
    {
        QMutexLocker lock(&mutex_);
        if (live)
            images_.insert(pixels);
        else
            images_.erase(pixels);
    }
    bool isImage(const void* pixels)
    {
        QMutexLocker lock(&mutex_);
        return images_.count(pixels) != 0;
    }

private:
    QMutex mutex_;
    std::vector<Block> blocks_;
    size_t held_ = 0;
    std::unordered_set<const void*> images_; // pixels of the pictures handed out
};

Stock& stock()
{
    static Stock* shared = new Stock; // never destroyed: buffers may be dropped at exit
    return *shared;
}

Block takeOrAllocate(size_t bytes)
{
    Block block{nullptr, 0};
    if (bytes >= kSmallest)
        block = stock().take(bytes);
    if (!block.data)
        block = allocate(bytes);
    return block;
}

void giveOrFree(Block block)
{
    if (!block.data)
        return;
    if (block.size >= kSmallest && block.size <= kScratchStockBytes)
        stock().give(block);
    else
        release(block);
}

void dropImage(void* info)
{
    auto* block = static_cast<Block*>(info);
    stock().noteImage(block->data, false);
    giveOrFree(*block);
    delete block;
}

} // namespace

ScratchBuffer::ScratchBuffer(size_t bytes)
{
    const Block block = takeOrAllocate(bytes);
    data_ = block.data;
    size_ = block.size;
}

ScratchBuffer::~ScratchBuffer()
{
    giveOrFree({data_, size_});
}

ScratchBuffer::ScratchBuffer(ScratchBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0))
{}

ScratchBuffer& ScratchBuffer::operator=(ScratchBuffer&& other) noexcept
{
    if (this != &other) {
        ScratchBuffer dropped(std::move(*this));
        data_ = std::exchange(other.data_, nullptr);
        size_ = std::exchange(other.size_, 0);
    }
    return *this;
}

QImage ScratchImage(const QSize& size, QImage::Format format)
{
    if (size.isEmpty() || format == QImage::Format_Invalid)
        return {};
    const int depth = QImage::toPixelFormat(format).bitsPerPixel();
    // QImage wants each line to start on a 32-bit boundary.
    const qint64 bytesPerLine = (qint64(size.width()) * depth + 31) / 32 * 4;
    const qint64 bytes = bytesPerLine * size.height();
    if (bytes < qint64(kSmallest) || bytesPerLine > INT_MAX || bytes > qint64(kScratchStockBytes))
        return QImage(size, format);
    const Block block = takeOrAllocate(size_t(bytes));
    if (!block.data)
        return {};
    auto* info = new Block(block);
    stock().noteImage(block.data, true);
    QImage image(static_cast<uchar*>(block.data), size.width(), size.height(),
                 qsizetype(bytesPerLine), format, dropImage, info);
    if (image.isNull())
        dropImage(info);
    return image;
}

QImage ScratchCopy(const QImage& image, QImage::Format format)
{
    if (image.isNull())
        return {};
    const QImage source = image.format() == format ? image : image.convertToFormat(format);
    QImage copy = ScratchImage(source.size(), format);
    if (copy.isNull() || source.isNull())
        return {};
    const auto line = size_t(std::min(copy.bytesPerLine(), source.bytesPerLine()));
    for (int y = 0; y < source.height(); ++y)
        std::memcpy(copy.scanLine(y), source.constScanLine(y), line);
    copy.setColorTable(source.colorTable());
    copy.setColorSpace(source.colorSpace());
    copy.setDotsPerMeterX(source.dotsPerMeterX());
    copy.setDotsPerMeterY(source.dotsPerMeterY());
    return copy;
}

bool IsScratchImage(const QImage& image)
{
    return !image.isNull() && stock().isImage(image.constBits());
}

size_t ScratchStockBytes()
{
    return stock().held();
}

void ReleaseScratchStock()
{
    stock().releaseAll();
}

} // namespace kavori
