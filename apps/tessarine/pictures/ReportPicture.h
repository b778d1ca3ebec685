#pragma once
#include "apps/tessarine/pictures/Drawing.h"
#include "apps/tessarine/render/Renderer.h"

namespace App {

/// Draws input and output level and the gain reduction of each band and of the limiter over time. Returns the
/// bytes of the picture file.
std::string drawReport(const RenderOptions &options, const Rendering &rendering, PictureFormat format);

} // namespace App
