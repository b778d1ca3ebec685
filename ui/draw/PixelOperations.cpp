#include "ui/draw/PixelOperations.h"

#include <algorithm>
#include <cstddef>

namespace DSP {
namespace {

constexpr int kBytes = 4, kColours = 3;

template <class Change>
void forEachPixel(uint8_t *first, int step, int width, int height, Change change)
{
    for (int y = 0; y < height; ++y) {
        uint8_t *row = first + static_cast<ptrdiff_t>(y) * step;
        for (int x = 0; x < width; ++x) change(row + static_cast<ptrdiff_t>(x) * kBytes);
    }
}

} // namespace

VectorStatus ippiAddC_8u_AC4IRSfs(const uint8_t value[3], uint8_t *srcDst, int step, int width, int height,
                                  int scale)
{
    const VectorStatus status = checkVectors(std::min(width, height), value, srcDst);
    if (status != kVectorOk) return status;
    if (scale != 0) return kVectorBadLength;
    forEachPixel(srcDst, step, width, height, [&](uint8_t *pixel) {
        for (int i = 0; i < kColours; ++i)
            pixel[i] = static_cast<uint8_t>(std::min(pixel[i] + value[i], 255));
    });
    return kVectorOk;
}

VectorStatus ippiAlphaPremulC_8u_AC4IR(uint8_t alpha, uint8_t *srcDst, int step, int width, int height)
{
    const VectorStatus status = checkVectors(std::min(width, height), srcDst);
    if (status != kVectorOk) return status;
    forEachPixel(srcDst, step, width, height, [alpha](uint8_t *pixel) {
        for (int i = 0; i < kColours; ++i) {
            const int product = pixel[i] * alpha;
            pixel[i] = static_cast<uint8_t>((product + (product >> 8) + 1) >> 8);
        }
        pixel[kColours] = alpha;
    });
    return kVectorOk;
}

} // namespace DSP
