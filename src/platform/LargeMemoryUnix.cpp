#include "LargeMemory.h"

#include <sys/mman.h>

#include <cstdio>
#include <cstring>

namespace kavori {

void* AllocateLargeBlock(size_t bytes)
{
    // Over-allocate by one large page and trim both ends so the block starts on a boundary.
    const size_t mapped = bytes + kLargePageBytes;
    void* raw = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (raw == MAP_FAILED)
        return nullptr;
    const auto start = reinterpret_cast<uintptr_t>(raw);
    const uintptr_t aligned = (start + kLargePageBytes - 1) & ~uintptr_t(kLargePageBytes - 1);
    if (aligned > start)
        munmap(raw, aligned - start);
    const uintptr_t end = start + mapped;
    if (end > aligned + bytes)
        munmap(reinterpret_cast<void*>(aligned + bytes), end - aligned - bytes);
    auto* block = reinterpret_cast<void*>(aligned);
#ifdef MADV_HUGEPAGE
    madvise(block, bytes, MADV_HUGEPAGE); // a hint: without it the block is ordinary memory
#endif
    return block;
}

void FreeLargeBlock(void* block, size_t bytes)
{
    if (block)
        munmap(block, bytes);
}

int64_t AvailableMemoryBytes()
{
    std::FILE* file = std::fopen("/proc/meminfo", "r");
    if (!file)
        return -1;
    char line[128];
    int64_t available = -1;
    while (std::fgets(line, sizeof line, file)) {
        long long kib = 0;
        if (std::sscanf(line, "MemAvailable: %lld kB", &kib) == 1) {
            available = int64_t(kib) * 1024;
            break;
        }
    }
    std::fclose(file);
    return available;
}

} // namespace kavori
