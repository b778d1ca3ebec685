#pragma once
#include "apps/tessarine/pictures/Drawing.h"
#include "apps/tessarine/render/Renderer.h"

namespace App {

/// The bytes of a picture file: input and output level, and the gain reduction of each band and of the limiter,
/// over time.
std::string drawReport(const RenderOptions &options, const Rendering &rendering, PictureFormat format);

} // namespace App
