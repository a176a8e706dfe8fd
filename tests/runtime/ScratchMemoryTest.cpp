#include "runtime/ScratchMemory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>
#include <vector>

using namespace kavori;

// A dropped buffer is handed to the next request it fits without much waste; the stock never
// holds more than its limit; moving a buffer moves its ownership.
TEST(ScratchMemoryTest, DroppedBuffersAreReusedWithinALimit)
{
    const size_t mb = size_t(1) << 20;
    void* first = nullptr;
    {
        ScratchBuffer a(8 * mb);
        ASSERT_NE(a.data(), nullptr);
        std::memset(a.data(), 1, a.size());
        first = a.data();
    }
    {
        ScratchBuffer small(1 * mb); // would waste most of the 8 MB block
        EXPECT_NE(small.data(), first);
        ScratchBuffer again(6 * mb);
        EXPECT_EQ(again.data(), first);
        EXPECT_GE(again.size(), 6 * mb);

        ScratchBuffer moved(std::move(again));
        EXPECT_EQ(again.data(), nullptr);
        EXPECT_EQ(moved.data(), first);
        ScratchBuffer target(2 * mb);
        target = std::move(moved);
        EXPECT_EQ(target.data(), first);
    }
    {
        std::vector<ScratchBuffer> many;
        for (int i = 0; i < 20; ++i)
            many.emplace_back(10 * mb);
    }
    EXPECT_LE(ScratchStockBytes(), kScratchStockBytes);
    EXPECT_GT(ScratchStockBytes(), 0u);

    ScratchBuffer tiny(16); // small requests come straight from malloc
    EXPECT_NE(tiny.data(), nullptr);
}
