#include <fmt/format.h>
#include <optional>

#include "apps/tessarine/Commands.h"
#include "apps/tessarine/Failure.h"
#include "apps/tessarine/Report.h"
#include "apps/tessarine/TemporaryFile.h"

namespace App {

namespace fs = std::filesystem;

namespace {

bool isSameFile(const fs::path &a, const fs::path &b)
{
    std::error_code ignored;
    const auto real = [&](const fs::path &path) {
        return fs::weakly_canonical(fs::absolute(path, ignored), ignored);
    };
    return real(a) == real(b);
}

} // namespace

void run(const RenderOptions &options)
{
    if (!options.report.empty() &&
        (isSameFile(options.report, options.out) || isSameFile(options.report, options.in)))
        throw Failure(
            fmt::format("the report would overwrite {}; give it another name", options.report.string()));
    if (!options.chunk.empty() &&
        (isSameFile(options.chunk, options.out) || isSameFile(options.chunk, options.report)))
        throw Failure(fmt::format("the chunk {} would be overwritten; give the output another name",
                                  options.chunk.string()));
    std::optional<TemporaryFile>
        report; // opened first, so that a place that cannot be written costs no rendering
    if (!options.report.empty()) report.emplace(options.report);

    const Rendering rendering = render(options);
    const Summary summary = summarise(options, rendering);
    for (const std::string &remark : summary.remarks) fmt::print(stderr, "tessarine: {}\n", remark);
    if (report) {
        report->write(makeReport(options, rendering, summary));
        report->commit();
    }
    fmt::print("{}\n{}\n{}\n{}", toText(summary.levels), toText(summary.reduction), toText(summary.work),
               toText(summary.files));
}

} // namespace App
