#pragma once
#include <cstdint>
#include <memory>

#include "PluginBase/Util/String.h"
#include "ui/draw/EmbeddedFiles.h"

namespace UI::Native {

/// An embedded PNG image, decoded. Palettes, grey of less than 8 bits and transparent colours have become
/// full channels.
/// Pixels  0xAARRGGBB, where AA counts the other way round: 0 is opaque and 255 transparent. So a picture
///         without transparency has 0 there
/// Thread  window thread; decodes when constructed
/// Errors  not a PNG, cut short, damaged, or larger than kMaxSide either way: isEmpty()
class Png {
public:
    static constexpr uint32_t kMaxSide = 4096;

    explicit Png(const String &name) : Png(findEmbeddedFile(name)) {}
    explicit Png(EmbeddedData file);
    ~Png();
    Png(const Png &) = delete;
    Png &operator=(const Png &) = delete;

    bool isEmpty() const;
    uint32_t width() const;
    uint32_t height() const;

    /// Writes width() by height() pixels, `stride` pixels from row to row, and tells whether any of them is
    /// less than opaque. A channel depth other than 8 bits leaves zeros.
    bool convert(uint32_t *pixels, uint32_t stride) const;

private:
    struct Decoder;
    std::unique_ptr<Decoder> decoder;
};

} // namespace UI::Native
