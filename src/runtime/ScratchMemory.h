#pragma once

#include <cstddef>

namespace kavori {

// A large working buffer that goes back to a small shared stock when dropped, for the next
// decode to reuse. Fresh memory costs a page fault per 4 KB page, which for a 12-megapixel JPEG
// decoded for the screen is a third of the work. Contents are not cleared. Move-only.
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

// How many bytes the stock holds for reuse now; at most kScratchStockBytes.
size_t ScratchStockBytes();
constexpr size_t kScratchStockBytes = size_t(96) << 20;

} // namespace kavori
