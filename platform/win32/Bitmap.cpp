#include "platform/Bitmap.h"

#include <windows.h>

namespace Platform {
namespace {

constexpr LONG kDotsPerMetre = 72; // ignored by Windows here

/// The colour table must follow the header.
struct BitmapFormat {
    BITMAPINFOHEADER header{};
    RGBQUAD colours[2] = {{0x00, 0x00, 0x00, 0}, {0xFF, 0xFF, 0xFF, 0}};
};

} // namespace

Bitmap::Bitmap(int32_t width, int32_t height, Format format) : pixelFormat(format)
{
    if (!setSize(width, height)) return;
    BitmapFormat description;
    BITMAPINFOHEADER &header = description.header;
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height; // negative: the top row comes first
    header.biPlanes = 1;
    header.biBitCount = format == Format::colour ? 32 : 8;
    header.biCompression = BI_RGB;
    header.biXPelsPerMeter = header.biYPelsPerMeter = kDotsPerMetre;
    header.biClrUsed = format == Format::colour ? 0 : 2;
    systemHandle = CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO *>(&description),
                                    DIB_RGB_COLORS, &memory, nullptr, 0);
    if (!systemHandle) {
        memory = nullptr;
        columns = rows = 0;
    }
}

Bitmap::~Bitmap()
{
    if (systemHandle) DeleteObject(systemHandle);
}

} // namespace Platform
