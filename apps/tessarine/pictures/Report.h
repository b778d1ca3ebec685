#pragma once
#include "apps/tessarine/render/Summary.h"

namespace App {

/// True if the extension is .html or .png in any case.
bool isReportPath(const std::filesystem::path &path);

/// Makes the content of the file options.report: the picture alone for .png, a self-contained page with the
/// picture and the figures for .html.
std::string makeReport(const RenderOptions &options, const Rendering &rendering, const Summary &summary);

} // namespace App
