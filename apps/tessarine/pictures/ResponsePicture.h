#pragma once
#include "apps/tessarine/effect/Response.h"
#include "apps/tessarine/pictures/Drawing.h"

namespace App {

/// Draws the bands and their sum over frequency, and below them the sum alone on an enlarged scale. Returns
/// the bytes of the picture file.
std::string drawResponse(const Response &response, PictureFormat format);

} // namespace App
