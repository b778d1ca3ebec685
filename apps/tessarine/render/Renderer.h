#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apps/tessarine/effect/EffectSetup.h"
#include "apps/tessarine/loudness/LoudnessChoice.h"
#include "apps/tessarine/loudness/LoudnessMeter.h"
#include "apps/tessarine/render/History.h"

namespace App {

struct RenderOptions {
    std::filesystem::path in, out;
    std::filesystem::path dry, report; // empty for none; render leaves the report to makeReport
    EffectSetup effect;
    uint32_t blockFrames = 512;
    bool compensate = true;
    std::optional<LoudnessGoal> goal; // to be reached by the parameters after the bands
};

/// What a rendering did.
struct Rendering {
    uint32_t rate = 0, channels = 0;   // Hz
    uint64_t frames = 0;               // of input and of output
    std::vector<std::string> settings; // those asked for, then those chosen
    std::optional<LoudnessChoice> choice;
    int formatIn = 0, formatOut = 0, formatDry = 0; // libsndfile's numbers
    uint32_t delay = 0;                             // samples, of the effect
    LoudnessMeter::Figures in{}, out{};
    History history;
    uint64_t clipped = 0;   // samples above full scale that the output format could not hold
    double dryGainDb = 0.0; // of the dry file, to be as loud as the output
    uint64_t dryClipped = 0;
    uint64_t silenced = 0;                     // input samples that were no numbers
    double seconds = 0.0, effectSeconds = 0.0; // elapsed, and of that inside the effect
    std::string warning;                       // of the crossover, may be empty
};

/// Streams the input file through the effect into the output file. Compensated, output and input have the
/// same length and lie sample on sample; else the output starts with the delay of the effect. A wanted
/// loudness costs a reading of the file before, a dry file one behind it.
/// Errors  Failure and Interrupted; no output is left then
Rendering render(const RenderOptions &options);

} // namespace App
