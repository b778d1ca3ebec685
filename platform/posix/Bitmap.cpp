#include "platform/Bitmap.h"

#include <cstring>
#include <new>

namespace Platform {
namespace {
constexpr std::align_val_t kAlignment{32}; // for wide vector loads
} // namespace

Bitmap::Bitmap(int32_t width, int32_t height, Format format) : pixelFormat(format)
{
    if (!setSize(width, height)) return;
    const size_t size = size_t{bytesPerRow()} * static_cast<size_t>(height);
    memory = ::operator new(size, kAlignment, std::nothrow);
    if (memory)
        std::memset(memory, 0, size);
    else
        columns = rows = 0;
}

Bitmap::~Bitmap() { ::operator delete(memory, kAlignment); }

} // namespace Platform
