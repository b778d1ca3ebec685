#include "apps/tessarine/pictures/Report.h"

#include <fmt/format.h>

#include "apps/tessarine/console/Text.h"
#include "apps/tessarine/pictures/ReportPicture.h"

namespace App {

namespace {

constexpr const char *kPageHead = R"(<!doctype html>
<html lang="en"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width">
<style>
body { font: 15px/1.5 "DejaVu Sans", system-ui, sans-serif; color: #21262e; max-width: 1100px; margin: 2em auto; padding: 0 1em; }
svg { width: 100%; height: auto; }
table { border-collapse: collapse; margin: 0 2.5em 1.5em 0; }
th, td { text-align: left; padding: .2em 1.6em .2em 0; border-bottom: 1px solid #e3e6eb; font-weight: normal; }
th { color: #6b7380; }
table.numbers td, table.numbers thead th + th { text-align: right; font-variant-numeric: tabular-nums; }
.tables { display: flex; flex-wrap: wrap; align-items: flex-start; }
ul { columns: 16em; }
.remark { border-left: 4px solid #de8f05; padding-left: .8em; }
</style>
)";

bool endsIn(const std::filesystem::path &path, const char *ending)
{
    return sameName(path.extension().string(), ending);
}

std::string escaped(const std::string &text)
{
    std::string result;
    for (const char c : validUtf8(text)) {
        switch (c) {
        case '&': result += "&amp;"; break;
        case '<': result += "&lt;"; break;
        case '>': result += "&gt;"; break;
        default: result += c;
        }
    }
    return result;
}

std::string tableRow(const std::vector<std::string> &cells, bool heading)
{
    std::string row = "<tr>";
    for (size_t i = 0; i < cells.size(); ++i)
        row +=
            i == 0 || heading ? "<th>" + escaped(cells[i]) + "</th>" : "<td>" + escaped(cells[i]) + "</td>";
    return row + "</tr>\n";
}

std::string toHtml(const Table &table)
{
    if (table.rows.empty()) return {};
    std::string html = table.headed ? "<table class=\"numbers\">\n" : "<table>\n";
    for (size_t i = 0; i < table.rows.size(); ++i) {
        const bool heading = table.headed && i == 0;
        const std::string row = tableRow(table.rows[i], heading);
        html += heading ? "<thead>" + row + "</thead>\n" : row;
    }
    return html + "</table>\n";
}

/// Removes the XML declaration, which is not allowed inside an HTML page.
std::string inlineDrawing(std::string svg)
{
    svg.erase(0, svg.find("<svg"));
    return svg;
}

std::string makePage(const RenderOptions &options, const Rendering &rendering, const Summary &summary)
{
    const std::string title = escaped(options.in.filename().string());
    std::string page = fmt::format("{}<title>{}: Tessarine</title></head><body>\n<h1>Rendering report</h1>\n",
                                   kPageHead, title);
    for (const std::string &remark : summary.remarks)
        page += "<p class=\"remark\">" + escaped(remark) + "</p>\n";
    page += "<div class=\"tables\">\n" + toHtml(summary.levels) + toHtml(summary.reduction) +
            toHtml(summary.goal) + toHtml(summary.choice) + "</div>\n";
    page += inlineDrawing(drawReport(options, rendering, PictureFormat::svg));
    page += toHtml(summary.files) + toHtml(summary.work);
    if (!rendering.settings.empty()) {
        page += "<p>Settings given with --set or chosen for --loudness:</p>\n<ul>\n";
        for (const std::string &setting : rendering.settings) page += "<li>" + escaped(setting) + "</li>\n";
        page += "</ul>\n";
    }
    return page + "</body></html>\n";
}

} // namespace

bool isReportPath(const std::filesystem::path &path) { return endsIn(path, ".html") || endsIn(path, ".png"); }

std::string makeReport(const RenderOptions &options, const Rendering &rendering, const Summary &summary)
{
    return endsIn(options.report, ".png") ? drawReport(options, rendering, PictureFormat::png)
                                          : makePage(options, rendering, summary);
}

} // namespace App
