#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/effect/ParameterTable.h"

namespace App {

namespace {

void showParameters()
{
    const EffectHost host({.rate = 44100, .channels = 2, .blockFrames = 512});
    const std::vector<Parameter> parameters = listParameters(host);
    constexpr const char *kRow = "{:>5}  {:<33}  {:<5}  {:<12}  {:>8}  {}\n";
    fmt::print(kRow, "index", "name", "unit", "range", "default", "display");
    bool hostsSeeIt = true;
    for (const Parameter &p : parameters) {
        if (hostsSeeIt && !p.hostIndex) fmt::print("\nHidden from hosts, but accepted by --set:\n");
        hostsSeeIt = p.hostIndex.has_value();
        const bool isSwitch = p.kind == DSP::ParamKind::boolean;
        const std::string range = isSwitch ? "off, on" : fmt::format("{:g} to {:g}", p.minimum, p.maximum);
        fmt::print(kRow, p.hostIndex ? std::to_string(*p.hostIndex) : "", p.name, p.unit, range,
                   p.format(p.defaultValue), p.display(host));
    }
}

} // namespace

void addParams(CLI::App &app)
{
    app.add_subcommand("params", "List all parameters with index, unit, range, default and displayed value")
        ->callback(showParameters);
}

} // namespace App
