#include "PluginBase/Util/AlignedBuffer.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>

namespace {

TEST(AlignedBuffer, KeepsContentsWhenGrowingAndAfterFailedAllocation)
{
    Util::AlignedBuffer<double> buffer;
    size_t kept = 0;
    for (const size_t wanted : {1u, 7u, 3u, 64u, 64u, 4097u, 10u}) {
        SCOPED_TRACE(wanted);
        const double *before = buffer.data();
        buffer.grow(wanted);
        EXPECT_TRUE(wanted > kept || buffer.data() == before) << "moved without growing";
        ASSERT_EQ(buffer.size(), std::max(kept, wanted));
        EXPECT_EQ(reinterpret_cast<uintptr_t>(buffer.data()) % 32, 0u);
        for (size_t i = 0; i < buffer.size(); ++i) ASSERT_EQ(buffer[i], i < kept ? i + 1.0 : 0.0) << i;
        std::iota(buffer.begin(), buffer.end(), 1.0);
        kept = buffer.size();
    }
    const double *memory = buffer.data();
    Util::AlignedBuffer<double> target(100);
    target = std::move(buffer);
    // The maximum overflows before the allocation: sanitizers abort on oversized allocations.
    EXPECT_THROW(target.grow(std::numeric_limits<size_t>::max()), std::bad_alloc);
    EXPECT_EQ(target.data(), memory);
    EXPECT_EQ(target.size(), kept);
}

} // namespace
