#pragma once

#include <QImage>
#include <QSize>

#include <cstddef>

namespace kavori {

// The one home of large working buffers and large pictures. A dropped buffer goes back to a
// shared stock for the next decode of the same size to reuse: fresh memory costs a page fault
// per page, which on virtual machines is about 10 µs for 4 KiB, 130 ms for a 12-megapixel
// picture. Blocks of 2 MiB and more are aligned to 2 MiB and advised for huge pages. The stock
// keeps at most kScratchStockBytes and nothing while the system runs short of memory.

// A working buffer. Contents are not cleared. Move-only.
class ScratchBuffer {
public:
    ScratchBuffer() = default;
    explicit ScratchBuffer(size_t bytes); // data() is null when memory ran out
    ~ScratchBuffer();
    ScratchBuffer(ScratchBuffer&& other) noexcept;
    ScratchBuffer& operator=(ScratchBuffer&& other) noexcept;
    ScratchBuffer(const ScratchBuffer&) = delete;
    ScratchBuffer& operator=(const ScratchBuffer&) = delete;

    void* data() const { return data_; }
    size_t size() const { return size_; }
    template <typename T> T* as() const { return static_cast<T*>(data_); }

private:
    void* data_ = nullptr;
    size_t size_ = 0; // the size of the block held, at least the size asked for
};

// A picture whose pixels live in a stock block, returned to the stock when the last copy of
// the picture is dropped. Its pixels are not cleared: only for a caller that writes every one
// (a decoder, a copy, a fill). Small pictures, and any when memory ran out of stock, are
// ordinary QImages. Null when memory ran out.
QImage ScratchImage(const QSize& size, QImage::Format format);

// ScratchImage(size, format) with every pixel copied from `image` (converted when the
// formats differ): the detached copy a canvas needs, without fresh pages.
QImage ScratchCopy(const QImage& image, QImage::Format format);

// Whether the picture's pixels live in a stock block.
bool IsScratchImage(const QImage& image);

// How many bytes the stock holds for reuse now; at most kScratchStockBytes.
size_t ScratchStockBytes();
constexpr size_t kScratchStockBytes = size_t(160) << 20;

// Gives every kept block back to the system (memory is short, or the program goes idle).
void ReleaseScratchStock();

} // namespace kavori
