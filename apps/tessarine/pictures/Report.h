#pragma once
#include "apps/tessarine/render/Summary.h"

namespace App {

/// True if the extension is .html or .png in any case.
bool isReportPath(const std::filesystem::path &path);

/// The content of the file options.report. A .png is the picture alone; an .html is a self-contained page with
/// picture and figures.
std::string makeReport(const RenderOptions &options, const Rendering &rendering, const Summary &summary);

} // namespace App
