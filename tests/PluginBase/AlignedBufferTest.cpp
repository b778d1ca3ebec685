#include "PluginBase/Util/AlignedBuffer.h"
#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>

namespace {

template <class T>
class AlignedBuffer : public testing::Test {
};
using Elements = testing::Types<float, double, uint8_t>;
TYPED_TEST_SUITE(AlignedBuffer, Elements);

TYPED_TEST(AlignedBuffer, GrowsWithItsContentsAndNeverShrinks)
{
    Util::AlignedBuffer<TypeParam> buffer;
    EXPECT_EQ(buffer.size(), 0u);
    std::size_t kept = 0;
    for (const std::size_t wanted : {1u, 7u, 3u, 64u, 64u, 4097u, 10u}) {
        SCOPED_TRACE(wanted);
        const TypeParam *before = buffer.data();
        buffer.grow(wanted);
        EXPECT_TRUE(wanted > kept || buffer.data() == before) << "a size seen before moves nothing";
        ASSERT_EQ(buffer.size(), std::max(kept, wanted));
        EXPECT_EQ(reinterpret_cast<uintptr_t>(buffer.data()) % 32, 0u);
        for (std::size_t i = 0; i < buffer.size(); ++i)
            ASSERT_EQ(buffer[i], i < kept ? static_cast<TypeParam>(i + 1) : TypeParam(0)) << i;
        std::iota(buffer.begin(), buffer.end(), TypeParam(1));
        kept = buffer.size();
    }
}

TYPED_TEST(AlignedBuffer, MovesByHandingOverItsMemoryAndStaysAsItWasWhenNoneCanBeHad)
{
    Util::AlignedBuffer<TypeParam> source(9), target(100);
    const TypeParam *memory = source.data();
    target = std::move(source);
    if constexpr (sizeof(TypeParam) >
                  1) { // more than can be asked for: sanitizers abort on what is only too much
        EXPECT_THROW(target.grow(std::numeric_limits<std::size_t>::max()), std::bad_alloc);
    }
    EXPECT_EQ(target.data(), memory);
    EXPECT_EQ(target.size(), 9u);
}

} // namespace
