#pragma once
#include <cstdint>
#include <utility>

namespace Platform {

/// Pixels in memory that the window system can copy to the screen, top row first.
/// Shape   `colour`: one 32-bit word per pixel, rows without padding. `mask`: one byte per pixel, 0 black and
///         1 white, rows padded to a multiple of four bytes. Initially all 0
/// Thread  one at a time
/// Errors  a side below 1 or above kMaxSide, or out of memory: the bitmap is empty
class Bitmap {
public:
    /// Pixels. Larger than any screen, and small enough that no byte count of a bitmap exceeds 32 bits.
    static constexpr int32_t kMaxSide = 16384;

    enum class Format { colour, mask };

    Bitmap() = default;
    Bitmap(int32_t width, int32_t height, Format format);
    ~Bitmap();
    Bitmap(Bitmap &&other) noexcept { swap(other); }
    Bitmap &operator=(Bitmap &&other) noexcept
    {
        swap(other);
        return *this;
    }

    bool isEmpty() const { return !memory; }
    /// Pixels; 0 if empty.
    int32_t width() const { return columns; }
    int32_t height() const { return rows; }
    Format format() const { return pixelFormat; }
    /// Distance between the starts of two rows.
    uint32_t bytesPerRow() const
    {
        const auto pixels = static_cast<uint32_t>(columns);
        return pixelFormat == Format::colour ? pixels * 4 : (pixels + 3) / 4 * 4;
    }
    /// Null if empty.
    void *pixels() const { return memory; }
    /// The system's handle, to copy from the bitmap or draw text into it; null if the system has none.
    void *handle() const { return systemHandle; }

private:
    /// Returns false and changes nothing if a side is out of range.
    bool setSize(int32_t width, int32_t height)
    {
        if (width < 1 || height < 1 || width > kMaxSide || height > kMaxSide) return false;
        columns = width;
        rows = height;
        return true;
    }
    void swap(Bitmap &other) noexcept
    {
        std::swap(memory, other.memory);
        std::swap(systemHandle, other.systemHandle);
        std::swap(columns, other.columns);
        std::swap(rows, other.rows);
        std::swap(pixelFormat, other.pixelFormat);
    }

    void *memory = nullptr;
    void *systemHandle = nullptr;
    int32_t columns = 0, rows = 0;
    Format pixelFormat = Format::colour;
};

} // namespace Platform
