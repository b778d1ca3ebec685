#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "apps/tessarine/effect/EffectSetup.h"
#include "apps/tessarine/files/FileFormat.h"
#include "apps/tessarine/loudness/LoudnessChoice.h"
#include "apps/tessarine/loudness/LoudnessMeter.h"
#include "apps/tessarine/render/History.h"

namespace App {

struct RenderOptions {
    std::filesystem::path in, out;
    std::filesystem::path dry, delta, report; // empty for none; render does not write the report
    SampleFormat samples;                     // of all written audio files
    EffectSetup effect;
    uint32_t blockFrames = 512;
    bool compensate = true;
    double start = 0.0;               // seconds
    std::optional<double> length;     // seconds; default: to the end of the file
    double mixPercent = 100.0;        // share of the effect's output in a mix with its input
    std::optional<LoudnessGoal> goal; // reached with the limiter and the output gain
    std::optional<double> truePeak;   // maximum in dBTP without a goal, kept with the output gain
};

/// Results and measurements of a rendering.
struct Rendering {
    uint32_t rate = 0, channels = 0;   // Hz
    uint64_t frames = 0;               // equal for input and output
    std::vector<std::string> settings; // those given with --set, then those chosen for the goal
    std::optional<LoudnessChoice> choice;
    double loweredDb = 0.0;                         // change of 'Gain' for RenderOptions::truePeak
    int formatIn = 0, formatOut = 0, formatDry = 0; // format codes of libsndfile
    uint32_t delay = 0;                             // delay of the effect in samples
    LoudnessMeter::Figures in{}, out{};             // `out` describes the written file
    std::optional<double> encodedTruePeakDb;        // of the decoded output file, if its format is lossy
    History history;
    uint64_t clipped = 0;   // output samples clipped by an integer format
    double dryGainDb = 0.0; // gain that matches the dry file to the output's loudness
    uint64_t dryClipped = 0, deltaClipped = 0;
    uint64_t silenced = 0;                     // input samples zeroed: NaN, infinite or absurdly loud
    double seconds = 0.0, effectSeconds = 0.0; // elapsed time in total and inside the effect
    std::vector<std::string> metadataRemarks;  // about metadata that the output does not contain
    std::string warning;                       // about close crossover cutoffs; may be empty

    /// True if there is a target and the output misses it by more than 0.1 LU.
    bool missesLoudness() const;
    /// The same, or the output exceeds the maximum true peak.
    bool missesGoal() const;
    /// True if the output, or the decoded output of a lossy format, exceeds this true peak in dBTP.
    bool exceeds(double truePeak) const
    {
        return out.truePeakDb > truePeak || (encodedTruePeakDb && *encodedTruePeakDb > truePeak);
    }
};

/// Streams the input file through the effect into the output file. The output is as long as the input or the excerpt.
/// It is aligned with the input if the delay is compensated, else it starts with the delay of the effect. A loudness
/// goal requires more passes over the input, a dry file one more afterwards.
/// Errors  Failure and Interrupted; no output file is written then
Rendering render(const RenderOptions &options);

} // namespace App
