#pragma once
#include <cstdint>
#include <memory>

#include "PluginBase/Util/String.h"
#include "ui/draw/EmbeddedFiles.h"

namespace UI::Native {

/// A decoded PNG image. Palettes, grey below 8 bits and transparent colours are expanded to full channels.
/// Pixels  0xAARRGGBB; AA is inverted alpha: 0 opaque, 255 transparent
/// Thread  window thread; the constructor decodes
/// Errors  isEmpty() if the file is not a PNG, is truncated or damaged, or has a side longer than kMaxSide
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

    /// Writes width() by height() pixels, with rows `stride` pixels apart. Returns true if a pixel is not fully
    /// opaque. Writes zeros if the channel depth is not 8 bits.
    bool convert(uint32_t *pixels, uint32_t stride) const;

private:
    struct Decoder;
    std::unique_ptr<Decoder> decoder;
};

} // namespace UI::Native
