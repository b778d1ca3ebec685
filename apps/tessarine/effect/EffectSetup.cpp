#include "apps/tessarine/effect/EffectSetup.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fmt/format.h>
#include <fstream>

#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/effect/Assignment.h"
#include "apps/tessarine/files/InputFile.h"

namespace App {

namespace fs = std::filesystem;

namespace {

constexpr double kFlatFromOctaves = 2.0; // minimum distance between cutoffs for a flat sum of the bands
constexpr const char *kNames[DSP::kCutoffs] = {"Low", "Mid", "High"};
constexpr size_t kMostBytes = size_t{1} << 20; // a chunk has a few hundred bytes

std::string readFile(const fs::path &path)
{
    requirePlainFile(path, "a chunk file");
    std::string bytes(kMostBytes + 1, '\0');
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (file) file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file && !file.eof())
        throw Failure(fmt::format("{} cannot be read: {}; check the file and its permissions", path.string(),
                                  std::strerror(errno != 0 ? errno : EIO)));
    bytes.resize(static_cast<size_t>(file.gcount()));
    if (bytes.size() > kMostBytes)
        throw Failure(fmt::format("{} is larger than 1 MiB, so it is not a chunk of this effect; use a file "
                                  "written by 'tessarine chunk'",
                                  path.string()));
    return bytes;
}

const DSP::CrossOver &crossOverOf(const EffectHost &host)
{
    return *host.plugin().transformHandle().crossOver();
}

} // namespace

std::unique_ptr<EffectHost> makeEffect(const EffectHost::Layout &layout, const EffectSetup &setup)
{
    auto host = std::make_unique<EffectHost>(layout);
    if (!setup.chunk.empty()) loadChunk(*host, setup.chunk);
    applySettings(*host, setup.settings);
    requireAscendingCutoffs(*host);
    return host;
}

EffectSetup neutralSetup(const EffectSetup &setup)
{
    EffectSetup neutral = setup;
    neutral.settings.insert(neutral.settings.end(), {"Limiter Bypass=on", "Gain=0"});
    for (uint32_t band = 1; band <= DSP::kBands; ++band) {
        neutral.settings.push_back(fmt::format("Band {} Bypass=on", band));
        neutral.settings.push_back(fmt::format("Band {} Solo=off", band));
    }
    return neutral;
}

void loadChunk(EffectHost &host, const fs::path &path)
{
    if (!host.setChunk(readFile(path)))
        throw Failure(fmt::format("{} is damaged or not a chunk of this effect; use a file written by "
                                  "'tessarine chunk'",
                                  path.string()));
}

std::string changedByChunk(const fs::path &chunk, std::span<const char *const> names)
{
    EffectHost host({.rate = 44100, .channels = 2, .blockFrames = 512});
    std::vector<std::pair<Parameter, std::string>> defaults; // with their displayed values
    for (const Parameter &p : listParameters(host)) {
        if (std::find(names.begin(), names.end(), p.name) != names.end())
            defaults.emplace_back(p, p.display(host));
    }
    loadChunk(host, chunk);
    for (const auto &[parameter, usual] : defaults) {
        const std::string now = parameter.display(host);
        if (now != usual) return fmt::format("{}={}", parameter.name, now);
    }
    return {};
}

void requireAscendingCutoffs(const EffectHost &host)
{
    const DSP::CrossOver &crossOver = crossOverOf(host);
    for (uint32_t i = 0; i + 1 < DSP::kCutoffs; ++i) {
        const float lower = crossOver.cutoff(i), upper = crossOver.cutoff(i + 1);
        if (lower > upper)
            throw Failure(
                fmt::format("'Crossover {} Cutoff' ({:.0f} Hz) is above 'Crossover {} Cutoff' ({:.0f} Hz); "
                            "set them in ascending order",
                            kNames[i], lower, kNames[i + 1], upper));
    }
}

std::string closeCutoffsWarning(const EffectHost &host, uint32_t rate)
{
    const DSP::CrossOver &crossOver = crossOverOf(host);
    std::string pairs;
    for (uint32_t i = 0; i + 1 < DSP::kCutoffs; ++i) {
        const float lower = crossOver.cutoff(i), upper = crossOver.cutoff(i + 1);
        if (upper >= static_cast<float>(rate) * 0.5f) break;
        if (std::log2(static_cast<double>(upper) / static_cast<double>(lower)) >= kFlatFromOctaves) continue;
        pairs += fmt::format("{}'Crossover {} Cutoff' ({:.0f} Hz) and 'Crossover {} Cutoff' ({:.0f} Hz)",
                             pairs.empty() ? "" : ", ", kNames[i], lower, kNames[i + 1], upper);
    }
    if (pairs.empty()) return {};
    return fmt::format("{} are less than two octaves apart, so the sum of the bands dips between "
                       "them; run 'tessarine response' to see by how much",
                       pairs);
}

} // namespace App
