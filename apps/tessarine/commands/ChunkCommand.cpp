#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/effect/Assignment.h"
#include "apps/tessarine/effect/EffectSetup.h"
#include "apps/tessarine/files/TemporaryFile.h"

namespace App {

namespace {

struct ChunkOptions {
    std::filesystem::path file, edited; // `edited`: the file to write, if `file` is to be read first
    std::vector<std::string> settings;  // each "NAME=VALUE", for writing
    bool print = false;                 // print the file instead of writing it
};

/// Applies the settings. Throws Failure if one changes a parameter that chunks do not store.
void applySavedSettings(EffectHost &host, const std::vector<std::string> &settings)
{
    std::vector<std::pair<Parameter, std::string>> unsaved; // with their displayed values before the change
    for (const Parameter &p : listParameters(host)) {
        if (!p.saved) unsaved.emplace_back(p, p.display(host));
    }
    applySettings(host, settings);
    for (const auto &[parameter, before] : unsaved) {
        if (parameter.display(host) != before)
            throw Failure(fmt::format("'{}' is not saved in chunks; leave it out here and give it to "
                                      "'tessarine render' with --set",
                                      parameter.name));
    }
}

/// Throws Failure if `target` exists and is not a chunk, or is one that would be reset to the defaults.
void requireReplaceable(const ChunkOptions &options, const std::filesystem::path &target)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(target, ignored)) return;
    EffectHost probe({.rate = 44100, .channels = 2, .blockFrames = 512});
    try {
        loadChunk(probe, target);
    } catch (const Failure &) {
        throw Failure(fmt::format("{} exists and is not a chunk; choose another name", target.string()));
    }
    if (options.edited.empty() && options.settings.empty())
        throw Failure(
            fmt::format("{} exists and would be reset to the defaults; to print it, add --print; to change "
                        "it, give --set and the name of the changed chunk",
                        target.string()));
}

void writeChunk(EffectHost &host, const ChunkOptions &options)
{
    const std::filesystem::path &target = options.edited.empty() ? options.file : options.edited;
    requireReplaceable(options, target);
    if (!options.edited.empty()) loadChunk(host, options.file);
    applySavedSettings(host, options.settings);
    requireAscendingCutoffs(host);
    const std::string chunk = host.chunk();
    if (chunk.empty())
        throw Failure(fmt::format("{} was not written: the effect returned no chunk, probably for lack of "
                                  "memory; close other programs and try again",
                                  target.string()));
    TemporaryFile file(target);
    file.write(chunk);
    file.commit();
    fmt::print("Chunk  {}, {} bytes\n", target.string(), chunk.size());
}

void printSaved(const EffectHost &host, const std::vector<Parameter> &parameters)
{
    for (const Parameter &p : parameters) {
        if (!p.saved) continue;
        const std::string row = fmt::format("{:<33}  {:>10}  {}", p.name, p.display(host), p.unit);
        fmt::print("{}\n", row.substr(0, row.find_last_not_of(' ') + 1));
    }
}

void makeChunk(const ChunkOptions &options)
{
    EffectHost host({.rate = 44100, .channels = 2, .blockFrames = 512});
    if (!options.print) return writeChunk(host, options);
    loadChunk(host, options.file);
    printSaved(host, listParameters(host));
}

} // namespace

void addChunk(CLI::App &app)
{
    const auto options = std::make_shared<ChunkOptions>();
    CLI::App *const command =
        app.add_subcommand("chunk", "Write or print a chunk file, which holds settings as hosts save them");
    command->add_option("FILE", options->file, "Chunk file to write, or to read with --print")
        ->type_name("")
        ->required();
    CLI::Option *const edited =
        command
            ->add_option(
                "NEW", options->edited,
                "Chunk file to write with the settings of FILE and those of --set (default: write FILE)")
            ->type_name("FILE");
    command->add_flag("--print", options->print, "Print the values stored in FILE instead of writing it")
        ->excludes(addSettings(command, options->settings))
        ->excludes(edited);
    command->callback([options] { makeChunk(*options); });
    endHelp(command,
            {"tessarine chunk my.chunk --set \"Band 1 Ratio=3:1\" --set \"Limiter Release=0.1 s\"",
             "tessarine chunk my.chunk --print", "tessarine chunk my.chunk louder.chunk --set Gain=3"});
}

} // namespace App
