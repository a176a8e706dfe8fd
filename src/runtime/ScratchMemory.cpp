#include "ScratchMemory.h"

#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

namespace kavori {

namespace {

// Buffers below this come from malloc's own pools quickly enough.
constexpr size_t kSmallest = size_t(256) << 10;

struct Block {
    void* data;
    size_t size;
};

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
        std::vector<void*> spare;
        {
            QMutexLocker lock(&mutex_);
            blocks_.push_back(block);
            held_ += block.size;
            // Over the limit the oldest blocks go back to the system.
            while (held_ > kScratchStockBytes) {
                spare.push_back(blocks_.front().data);
                held_ -= blocks_.front().size;
                blocks_.erase(blocks_.begin());
            }
        }
        for (void* p : spare)
            std::free(p);
    }
    size_t held()
    {
        QMutexLocker lock(&mutex_);
        return held_;
    }

private:
    QMutex mutex_;
    std::vector<Block> blocks_;
    size_t held_ = 0;
};

Stock& stock()
{
    static Stock* shared = new Stock; // never destroyed: buffers may be dropped at exit
    return *shared;
}

} // namespace

ScratchBuffer::ScratchBuffer(size_t bytes)
{
    if (bytes >= kSmallest) {
        const Block block = stock().take(bytes);
        data_ = block.data;
        size_ = block.size;
    }
    if (!data_) {
        data_ = std::malloc(std::max<size_t>(bytes, 1));
        size_ = data_ ? bytes : 0;
    }
}

ScratchBuffer::~ScratchBuffer()
{
    if (!data_)
        return;
    if (size_ >= kSmallest && size_ <= kScratchStockBytes)
        stock().give({data_, size_});
    else
        std::free(data_);
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

size_t ScratchStockBytes()
{
    return stock().held();
}

} // namespace kavori
