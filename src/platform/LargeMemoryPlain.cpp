#include "LargeMemory.h"

#include <cstdlib>
#include <cstring>

namespace kavori {

// Aligned by hand, the system's pointer kept just before the block.
void* AllocateLargeBlock(size_t bytes)
{
    auto* raw = static_cast<char*>(std::malloc(bytes + kLargePageBytes));
    if (!raw)
        return nullptr;
    const auto start = reinterpret_cast<uintptr_t>(raw) + sizeof(void*);
    auto* block =
        reinterpret_cast<char*>((start + kLargePageBytes - 1) & ~uintptr_t(kLargePageBytes - 1));
    std::memcpy(block - sizeof(void*), &raw, sizeof raw);
    return block;
}

void FreeLargeBlock(void* block, size_t)
{
    if (!block)
        return;
    void* raw = nullptr;
    std::memcpy(&raw, static_cast<char*>(block) - sizeof(void*), sizeof raw);
    std::free(raw);
}

int64_t AvailableMemoryBytes()
{
    return -1;
}

} // namespace kavori
