#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/effect/ParameterTable.h"

namespace App {

namespace {

constexpr const char *kRow = "{:>5}  {:<33}  {:<5}  {:<12}  {:>8}  {}\n";

void printRow(const EffectHost &host, const Parameter &p)
{
    const bool isSwitch = p.kind == DSP::ParamKind::boolean;
    const std::string range = isSwitch ? "off, on" : fmt::format("{:g} to {:g}", p.minimum, p.maximum);
    fmt::print(kRow, p.hostIndex ? std::to_string(*p.hostIndex) : "", p.name, p.unit, range,
               p.format(p.defaultValue), p.display(host));
}

void showParameters(bool all)
{
    const EffectHost host({.rate = 44100, .channels = 2, .blockFrames = 512});
    const std::vector<Parameter> parameters = listParameters(host);
    fmt::print(kRow, "index", "name", "unit", "range", "default", "display");
    for (const Parameter &p : parameters) {
        if (p.hostIndex) printRow(host, p);
    }
    fmt::print("\nHidden from hosts, but accepted by --set:\n");
    for (const Parameter &p : parameters) {
        if (!p.hostIndex && p.changesAudio) printRow(host, p);
    }
    if (!all) return;
    fmt::print("\nLikewise hidden, without effect on the audio:\n");
    for (const Parameter &p : parameters) {
        if (!p.changesAudio) printRow(host, p);
    }
}

} // namespace

void addParams(CLI::App &app)
{
    CLI::App *const command =
        app.add_subcommand("params", "List the parameters with index, unit, range, default and display");
    const auto all = std::make_shared<bool>(false);
    command->add_flag("--all", *all,
                      "Also list the settings of the editor's window and all other parameters that do not "
                      "change the audio (default: without them)");
    command->callback([all] { showParameters(*all); });
    endHelp(command, {"tessarine params", "tessarine params --all"});
}

} // namespace App
