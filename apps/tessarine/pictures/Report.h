#pragma once
#include "apps/tessarine/render/Summary.h"

namespace App {

/// Whether the ending, .html or .png in any case, names a kind of report.
bool isReportPath(const std::filesystem::path &path);

/// The content of options.report: the picture alone, or one page with the picture and the figures that needs
/// no other file.
std::string makeReport(const RenderOptions &options, const Rendering &rendering, const Summary &summary);

} // namespace App
