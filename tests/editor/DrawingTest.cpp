#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

#include "tests/signals/Signals.h"
#include "ui/native/Blend.h"
#include "ui/native/Copy.h"
#include "ui/native/Fill.h"
#include "ui/native/Line.h"

using namespace UI::Native;

namespace {

constexpr uint32_t kColour = 0xFFFFFF;

/// One channel after the other, as a reader would do it by hand.
uint32_t plainBlend(uint32_t dst, uint32_t src, uint32_t a)
{
    if (a == 0) return src & kColour;
    if (a == 255) return dst & kColour;
    uint32_t result = 0;
    for (uint32_t shift : {0u, 8u, 16u}) {
        const uint32_t d = dst >> shift & 255, s = src >> shift & 255;
        result |= (d * a + s * (256 - a)) / 256 << shift;
    }
    return result;
}

/// An image with random pixels, and what it should look like after something was drawn.
struct Canvas {
    Canvas(Signals::Random &random, int32_t width, int32_t height)
        : surface(std::make_shared<Surface>(width, height)), w(width), h(height)
    {
        for (int32_t i = 0; i < w * h; ++i) surface->pixels()[i] = static_cast<uint32_t>(random.next());
        expected.assign(surface->pixels(), surface->pixels() + w * h);
    }
    bool holds(int32_t x, int32_t y) const { return x >= 0 && x < w && y >= 0 && y < h; }
    uint32_t &wanted(int32_t x, int32_t y) { return expected[static_cast<size_t>(y * w + x)]; }
    /// The first pixel that is not as it should be.
    ::testing::AssertionResult isAsExpected() const
    {
        for (int32_t i = 0; i < w * h; ++i)
            if (surface->pixels()[i] != expected[static_cast<size_t>(i)])
                return ::testing::AssertionFailure()
                       << "pixel " << i % w << ", " << i / w << " is " << std::hex << surface->pixels()[i]
                       << " and not " << expected[static_cast<size_t>(i)];
        return ::testing::AssertionSuccess();
    }

    const SurfaceRef surface;
    const int32_t w, h;
    std::vector<uint32_t> expected;
};

LineJob lineOn(const SurfaceRef &target, Point from, Point to, uint32_t style, uint32_t colour,
               uint8_t fade = 0)
{
    return {.x0 = from.x,
            .y0 = from.y,
            .x1 = to.x,
            .y1 = to.y,
            .style = style,
            .colour = colour,
            .fade = fade,
            .pixels = target->pixels(),
            .stride = target->stride(),
            .width = target->width(),
            .height = target->height()};
}

Rect anyRect(Signals::Random &random, int32_t reach)
{
    const auto any = [&] {
        return static_cast<int32_t>(random.below(static_cast<uint32_t>(reach))) - reach / 3;
    };
    return Rect::at({any(), any()}, any(), any());
}

uint8_t anyFade(Signals::Random &random)
{
    return static_cast<uint8_t>(random.chance(0.3) ? 0 : random.chance(0.1) ? 255 : random.below(256));
}

} // namespace

TEST(Blend, IsTheWeightedMeanOfEachChannelForEveryAlpha)
{
    Signals::Random random(1);
    for (uint32_t a = 0; a < 256; ++a)
        for (int i = 0; i < 2000; ++i) {
            const auto dst = static_cast<uint32_t>(random.next()), src = static_cast<uint32_t>(random.next());
            ASSERT_EQ(blend(dst, src, a, inverseAlpha(a)), plainBlend(dst, src, a))
                << std::hex << a << dst << src;
        }
    EXPECT_EQ(inverseAlpha(0), 255u);
    EXPECT_EQ(inverseAlpha(1), 255u);
    EXPECT_EQ(inverseAlpha(255), 1u);
}

TEST(Copy, MovesWhatBothImagesHoldAndNothingElse)
{
    Signals::Random random(2);
    for (int i = 0; i < 3000; ++i) {
        const auto side = [&] { return 1 + static_cast<int32_t>(random.below(20)); };
        Canvas from(random, side(), side()), to(random, side(), side());
        const Rect source = anyRect(random, 30);
        const Point at = anyRect(random, 30).corner();
        const uint8_t fade = anyFade(random);
        const bool useAlpha = random.chance(0.5);
        for (int32_t y = source.top; y <= source.bottom; ++y)
            for (int32_t x = source.left; x <= source.right; ++x) {
                const Point there = at + Point{x, y} - source.corner();
                if (!from.holds(x, y) || !to.holds(there.x, there.y)) continue;
                const uint32_t src = from.wanted(x, y);
                uint32_t &dst = to.wanted(there.x, there.y);
                const bool plain = !useAlpha && fade == 0; // the whole word then, its top byte too
                dst = plain ? src : plainBlend(dst, src, std::min((src >> 24) + fade, 255u));
            }
        if (random.chance(0.5)) {
            copyImage(from.surface, source, to.surface, at, useAlpha, fade);
        } else {
            const std::shared_ptr<const uint32_t[]> pixels(from.surface, from.surface->pixels());
            drawPixmap(std::make_shared<Pixmap>(
                           Pixmap{pixels, static_cast<uint32_t>(from.w), from.w, from.h, useAlpha}),
                       source, to.surface, at, fade);
        }
        ASSERT_TRUE(to.isAsExpected()) << "round " << i;
        ASSERT_TRUE(from.isAsExpected()) << "round " << i;
    }
}

TEST(Copy, OfImagesThatAreNotThereDoesNothing)
{
    Signals::Random random(3);
    const Rect all{0, 1000, 0, 1000};
    Canvas canvas(random, 4, 4);
    for (const SurfaceRef &other :
         {SurfaceRef(), std::make_shared<Surface>(0, 0), std::make_shared<Surface>(4, 4, 1)}) {
        copyImage(other, all, canvas.surface, {}, true, 9);
        copyImage(canvas.surface, all, other, {}, false, 0);
        drawPixmap(std::make_shared<Pixmap>(), all, other, {}, 0);
    }
    drawPixmap(nullptr, all, canvas.surface, {}, 0);
    EXPECT_TRUE(canvas.isAsExpected());
}

TEST(Fill, TouchesTheCommonPartOnlyAndScalesTheColour)
{
    Signals::Random random(4);
    for (int i = 0; i < 3000; ++i) {
        const Canvas canvas(random, 24, 17);
        const Rect area = anyRect(random, 30);
        const Rect clip = anyRect(random, 30).intersected(canvas.surface->bounds());
        const auto colour = static_cast<uint32_t>(random.next()) & kColour;
        const uint8_t fade = anyFade(random);
        fillRect(canvas.surface->pixels(), canvas.surface->stride(), area, clip, colour, fade);
        const Rect part = area.intersected(clip);
        const uint32_t inverse = fade == 0 ? 255 : 256 - fade;
        for (int32_t p = 0; p < canvas.w * canvas.h; ++p) {
            const uint32_t before = canvas.expected[static_cast<size_t>(p)],
                           after = canvas.surface->pixels()[p];
            if (!part.contains({p % canvas.w, p / canvas.w})) {
                ASSERT_EQ(before, after) << "round " << i;
                continue;
            }
            ASSERT_EQ(after >> 24, fade);
            for (const uint32_t shift : {0u, 8u, 16u}) {
                const double kept = std::round((before >> shift & 255) * fade / 255.0);
                const double wanted = std::min(kept + (colour >> shift & 255) * inverse / 255, 255.0);
                // The product with the fade may round the other way; the rest is exact.
                ASSERT_NEAR(after >> shift & 255, wanted, fade == 0 ? 0 : 1) << "round " << i;
            }
        }
    }
}

TEST(Line, PlainAndColouredStepAlongTheLongerAxisAndSkipWhatIsOutside)
{
    Signals::Random random(6);
    for (int i = 0; i < 3000; ++i) {
        Canvas canvas(random, 24, 17);
        const Rect ends = anyRect(random, 40);
        LineJob job = lineOn(canvas.surface, {ends.left, ends.top}, {ends.right, ends.bottom},
                             random.below(2) * 2, 0x123456, anyFade(random));
        std::vector<uint32_t> colours(100);
        for (uint32_t &colour : colours) colour = static_cast<uint32_t>(random.next()) & kColour;
        job.colours = colours.data();
        const int32_t dx = job.x1 - job.x0, dy = job.y1 - job.y0,
                      major = std::max(std::abs(dx), std::abs(dy));
        for (int32_t t = 0; t <= major; ++t) {
            // Each axis has moved as often as its own share of the steps is full.
            const int32_t x = job.x0 + (major ? std::abs(dx) * t / major * (dx < 0 ? -1 : 1) : 0);
            const int32_t y = job.y0 + (major ? std::abs(dy) * t / major * (dy < 0 ? -1 : 1) : 0);
            if (!canvas.holds(x, y)) continue;
            uint32_t &pixel = canvas.wanted(x, y);
            pixel = job.style == LineJob::plain ? plainBlend(pixel, job.colour, job.fade)
                                                : colours[static_cast<size_t>(t)];
        }
        drawLine(job);
        ASSERT_TRUE(canvas.isAsExpected())
            << "round " << i << ": " << dx << ", " << dy << " style " << job.style;
    }
}

/// The first steps of a line of slope 1/2, by hand: 20 pixels along and 10 across.
TEST(Line, SmoothWeighsItsPixelsAsGuptaAndSproull)
{
    const SurfaceRef to = std::make_shared<Surface>(30, 30);
    drawLine(lineOn(to, {2, 5}, {22, 15}, LineJob::smooth, 0xFFFFFF));
    const float inverse = 1.0f / (2.0f * std::sqrt(500.0f));
    const auto weight = [&](float t) {
        const float scaled = t * 2.0f / 3.0f;
        const auto a = static_cast<uint32_t>(scaled * scaled * 255.0f);
        return blend(0, 0xFFFFFF, std::min(a, 255u), inverseAlpha(std::min(a, 255u)));
    };
    const auto at = [&](int32_t x, int32_t y) { return to->pixels()[y * 30 + x]; };
    EXPECT_EQ(at(2, 5), 0xFFFFFFu);
    EXPECT_EQ(at(2, 6), weight(40 * inverse));
    EXPECT_EQ(at(2, 4), weight(40 * inverse));
    // error 2 x 10 - 20 = 0: across at once, 2 x (10 - 20) from the line.
    EXPECT_EQ(at(3, 6), weight(-20 * inverse));
    EXPECT_EQ(at(3, 7), weight(40 * inverse + 20 * inverse));
    EXPECT_EQ(at(3, 5), weight(40 * inverse - 20 * inverse));
}

TEST(Line, WithoutATargetDrawsNothing)
{
    LineJob job = lineOn(std::make_shared<Surface>(3, 3), {1, 1}, {1, 1}, LineJob::plain, 0xABCDEF);
    job.pixels = nullptr;
    for (job.style = 0; job.style < 3; ++job.style) drawLine(job);
}
