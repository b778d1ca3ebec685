#pragma once
#include <array>
#include <cstdint>
#include <vector>

/// What is wanted of a PNG file made in memory.
struct PngPicture {
    int colourType, bitDepth;
    bool interlaced = false;
    uint32_t width = 0, height = 0;
    std::vector<uint8_t> samples; // row by row, a byte each (two for 16 bits, the high one first)
    std::vector<std::array<uint8_t, 3>> palette{};
    std::vector<uint8_t> paletteAlpha{};       // of the first entries; the others are opaque
    std::vector<uint16_t> transparentColour{}; // one grey level or red, green and blue; empty: none
};

std::vector<uint8_t> writePng(const PngPicture &picture);

/// Makes the check sums of all chunks right again, as far as the lengths make sense.
void repairCheckSums(std::vector<uint8_t> &png);
