#include <gtest/gtest.h>

#include "tests/signals/Signals.h"
#include "ui/draw/Copy.h"

using namespace UI::Native;

namespace {

/// Reference blend, one channel at a time.
uint32_t blended(uint32_t dst, uint32_t src, uint32_t a)
{
    if (a == 0 || a == 255) return (a == 0 ? src : dst) & 0xFFFFFF;
    uint32_t result = 0;
    for (const uint32_t shift : {0u, 8u, 16u})
        result |= ((dst >> shift & 255) * a + (src >> shift & 255) * (256 - a)) / 256 << shift;
    return result;
}

int32_t any(Signals::Random &random, int32_t from, int32_t to)
{
    return from + static_cast<int32_t>(random.below(static_cast<uint32_t>(to - from + 1)));
}

SurfaceRef randomSurface(Signals::Random &random)
{
    auto made = std::make_shared<Surface>(any(random, 1, 20), any(random, 1, 20));
    for (int32_t i = 0; i < made->width() * made->height(); ++i)
        made->pixels()[i] = static_cast<uint32_t>(random.next());
    return made;
}

TEST(Copy, BlendsOnlyTheOverlapOfBothImages)
{
    Signals::Random random(2);
    const auto anyPoint = [&] { return Point{any(random, -10, 20), any(random, -10, 20)}; };
    for (int round = 0; round < 3000; ++round) {
        const SurfaceRef from = randomSurface(random), to = randomSurface(random);
        const Rect source = Rect::at(anyPoint(), any(random, -10, 20), any(random, -10, 20));
        const Point at = anyPoint();
        const auto fade = static_cast<uint8_t>(random.chance(0.3) ? 0 : any(random, 0, 255));
        const bool useAlpha = random.chance(0.5);
        std::vector<uint32_t> wanted(to->pixels(), to->pixels() + to->width() * to->height());
        for (size_t i = 0; i < wanted.size(); ++i) {
            const auto here = static_cast<int32_t>(i);
            const Point there = source.corner() + Point{here % to->width(), here / to->width()} - at;
            if (!source.contains(there) || !from->bounds().contains(there)) continue;
            const uint32_t src = from->pixels()[there.y * from->width() + there.x];
            if (useAlpha || fade != 0)
                wanted[i] = blended(wanted[i], src, std::min((src >> 24) + fade, 255u));
            else
                wanted[i] = src; // including the top byte
        }
        if (random.chance(0.5)) {
            copyImage(from, source, to, at, useAlpha, fade);
        } else {
            const Pixmap pixmap{
                {from, from->pixels()}, from->stride(), from->width(), from->height(), useAlpha};
            drawPixmap(std::make_shared<Pixmap>(pixmap), source, to, at, fade);
        }
        ASSERT_EQ(wanted, std::vector<uint32_t>(to->pixels(), to->pixels() + wanted.size())) << round;
    }
}

} // namespace
