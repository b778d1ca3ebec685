#pragma once
#include "apps/tessarine/effect/Response.h"
#include "apps/tessarine/pictures/Drawing.h"

namespace App {

/// The bands and their sum over frequency, and below them the sum alone on a fine scale.
std::string drawResponse(const Response &response, PictureFormat format);

} // namespace App
