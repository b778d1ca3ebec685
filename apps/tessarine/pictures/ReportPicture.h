#pragma once
#include "apps/tessarine/pictures/Drawing.h"
#include "apps/tessarine/render/Renderer.h"

namespace App {

/// Level in and out and the gain reduction of each band and of the limiter over time, as the bytes of a file.
std::string drawReport(const RenderOptions &options, const Rendering &rendering, PictureFormat format);

} // namespace App
