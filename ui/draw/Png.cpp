#include "ui/draw/Png.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <png.h>

namespace UI::Native {

struct PNGReadState {
    const uint8_t *data;
    uint32_t size, offset;
};

namespace {

void readBytes(png_structp png, png_bytep to, size_t length)
{
    PNGReadState &state = *static_cast<PNGReadState *>(png_get_io_ptr(png));
    if (length > state.size - state.offset) png_error(png, "PNGReadFunction: Too many bytes requested");
    std::memcpy(to, state.data + state.offset, length);
    state.offset += static_cast<uint32_t>(length);
}

// These replace libpng's default handlers, which write to stderr.
[[noreturn]] void leave(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void ignore(png_structp, png_const_charp) {}

constexpr uint32_t grey(uint32_t level) { return level << 16 | level << 8 | level; }
constexpr uint32_t colour(const uint8_t *rgb) { return uint32_t{rgb[0]} << 16 | rgb[1] << 8 | rgb[2]; }
constexpr uint32_t alpha(uint32_t inverted) { return inverted << 24; }

/// Converts a row with `samples` bytes per pixel. True if a pixel's top byte is not 0.
template <uint32_t samples, class Pixel>
bool convertRow(const uint8_t *row, uint32_t *pixels, uint32_t width, Pixel pixel)
{
    uint32_t all = 0;
    for (uint32_t x = 0; x < width; ++x, row += samples) all |= pixels[x] = pixel(row);
    return all >> 24 != 0;
}

bool convertRow(int colourType, const uint8_t *row, uint32_t *pixels, uint32_t width)
{
    switch (colourType) {
    case PNG_COLOR_TYPE_GRAY:
        return convertRow<1>(row, pixels, width, [](const uint8_t *at) { return grey(at[0]); });
    case PNG_COLOR_TYPE_RGB: return convertRow<3>(row, pixels, width, colour);
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        return convertRow<2>(row, pixels, width,
                             [](const uint8_t *at) { return grey(at[0]) | alpha(at[1]); });
    case PNG_COLOR_TYPE_RGB_ALPHA:
        return convertRow<4>(row, pixels, width, [](const uint8_t *at) { return colour(at) | alpha(at[3]); });
    default: std::fill_n(pixels, width, 0); return false;
    }
}

} // namespace

struct Png::Decoder {
    explicit Decoder(EmbeddedData file)
        : state{file.data, file.size, 0},
          png(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignore)),
          info(png ? png_create_info_struct(png) : nullptr)
    {
    }
    ~Decoder() { png_destroy_read_struct(&png, &info, nullptr); }
    Decoder(const Decoder &) = delete;
    Decoder &operator=(const Decoder &) = delete;

    bool read();

    PNGReadState state;
    png_structp png;
    png_infop info;
    png_bytepp rows = nullptr;
};

// On an error libpng jumps back to setjmp. This function must therefore have no objects with destructors and no
// local variables that change.
bool Png::Decoder::read()
{
    if (!info) return false;
    if (setjmp(png_jmpbuf(png)) != 0) return false;
    png_set_user_limits(png, kMaxSide, kMaxSide);
    png_set_palette_to_rgb(png);
    png_set_expand_gray_1_2_4_to_8(png);
    png_set_tRNS_to_alpha(png);
    png_set_read_fn(png, &state, readBytes);
    png_read_png(png, info, PNG_TRANSFORM_INVERT_ALPHA, nullptr);
    rows = png_get_rows(png, info);
    return rows;
}

Png::Png(EmbeddedData file)
{
    if (!file.data) return;
    auto opened = std::make_unique<Decoder>(file);
    if (opened->read()) decoder = std::move(opened);
}

Png::~Png() = default;

bool Png::isEmpty() const { return !decoder; }
uint32_t Png::width() const { return isEmpty() ? 0 : png_get_image_width(decoder->png, decoder->info); }
uint32_t Png::height() const { return isEmpty() ? 0 : png_get_image_height(decoder->png, decoder->info); }

bool Png::convert(uint32_t *pixels, uint32_t stride) const
{
    if (isEmpty()) return false;
    const int colourType = png_get_bit_depth(decoder->png, decoder->info) == 8
                               ? png_get_color_type(decoder->png, decoder->info)
                               : -1;
    bool hasAlpha = false;
    for (uint32_t y = 0; y < height(); ++y, pixels += stride)
        hasAlpha |= convertRow(colourType, decoder->rows[y], pixels, width());
    return hasAlpha;
}

} // namespace UI::Native
