#include <fmt/format.h>
#include <optional>

#include "apps/tessarine/commands/Commands.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/files/TemporaryFile.h"
#include "apps/tessarine/pictures/Report.h"

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

struct NamedFile {
    const char *role;
    fs::path path;
};

/// One file must not take the place of another; only the output may take that of the input.
void requireDistinct(const RenderOptions &options)
{
    const NamedFile input = {"input", options.in}, output = {"output", options.out};
    const NamedFile chunk = {"chunk", options.chunk}, dry = {"dry file", options.dry};
    const NamedFile report = {"report", options.report};
    // what is written, and what it would take the place of
    const std::pair<NamedFile, NamedFile> pairs[] = {
        {report, output}, {report, input}, {dry, output}, {dry, input},
        {dry, report},    {output, chunk}, {dry, chunk},  {report, chunk},
    };
    for (const auto &[written, taken] : pairs) {
        if (written.path.empty() || taken.path.empty() || !isSameFile(written.path, taken.path)) continue;
        throw Failure(fmt::format("the {} would overwrite the {} {}; give it another name", written.role,
                                  taken.role, taken.path.string()));
    }
}

std::string toScreen(const Summary &summary)
{
    std::string text;
    for (const Table *table : {&summary.levels, &summary.goal, &summary.choice, &summary.reduction,
                               &summary.work, &summary.files}) {
        if (table->rows.empty()) continue;
        text += (text.empty() ? "" : "\n") + toText(*table);
    }
    return text;
}

} // namespace

void run(const RenderOptions &options)
{
    requireDistinct(options);
    // opened first, so that a place that cannot be written costs no rendering
    std::optional<TemporaryFile> report;
    if (!options.report.empty()) report.emplace(options.report);

    const Rendering rendering = render(options);
    const Summary summary = summarise(options, rendering);
    for (const std::string &remark : summary.remarks) fmt::print(stderr, "tessarine: {}\n", remark);
    if (report) {
        report->write(makeReport(options, rendering, summary));
        report->commit();
    }
    fmt::print("{}", toScreen(summary));
}

} // namespace App
