#include "tests/ui/PngWriter.h"
#include <png.h>
#include <zlib.h>

namespace {

// Without a way back the library ends the program on an error, which is what a test wants.
void append(png_structp png, png_bytep bytes, size_t length)
{
    auto &file = *static_cast<std::vector<uint8_t> *>(png_get_io_ptr(png));
    file.insert(file.end(), bytes, bytes + length);
}

void flush(png_structp) {}

void writeHeader(png_structp png, png_infop info, const PngPicture &picture)
{
    png_set_IHDR(png, info, picture.width, picture.height, picture.bitDepth, picture.colourType,
                 picture.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    std::vector<png_color> palette;
    for (const auto &[red, green, blue] : picture.palette) palette.push_back({red, green, blue});
    if (!palette.empty()) png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    if (!picture.paletteAlpha.empty())
        png_set_tRNS(png, info, picture.paletteAlpha.data(), static_cast<int>(picture.paletteAlpha.size()),
                     nullptr);
    if (!picture.transparentColour.empty()) {
        const std::vector<uint16_t> &from = picture.transparentColour;
        const png_color_16 colour{0, from[0], from[from.size() / 2], from.back(), from[0]};
        png_set_tRNS(png, info, nullptr, 0, &colour);
    }
    png_write_info(png, info);
}

uint32_t bigEndian(const uint8_t *at) { return uint32_t{at[0]} << 24 | at[1] << 16 | at[2] << 8 | at[3]; }

} // namespace

std::vector<uint8_t> writePng(const PngPicture &picture)
{
    std::vector<uint8_t> file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, append, flush);
    writeHeader(png, info, picture);
    png_set_packing(png);
    const int passes = png_set_interlace_handling(png);
    const size_t rowBytes = picture.samples.size() / picture.height;
    for (int pass = 0; pass < passes; ++pass)
        for (uint32_t y = 0; y < picture.height; ++y)
            png_write_row(png, picture.samples.data() + y * rowBytes);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

void repairCheckSums(std::vector<uint8_t> &png)
{
    constexpr size_t kSignature = 8, kFrame = 12; // length, type and check sum of a chunk
    for (size_t at = kSignature; at + kFrame <= png.size();) {
        const size_t length = bigEndian(&png[at]);
        if (length > png.size() - at - kFrame) return;
        uLong sum = crc32(0, &png[at + 4], static_cast<uInt>(length + 4));
        for (size_t i = 4; i-- > 0; sum >>= 8) png[at + 8 + length + i] = sum & 0xFF;
        at += kFrame + length;
    }
}
