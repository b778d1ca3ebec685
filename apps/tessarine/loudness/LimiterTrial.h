#pragma once
#include <span>
#include <vector>

#include "apps/tessarine/loudness/LoudnessChoice.h"
#include "apps/tessarine/loudness/LoudnessMeter.h"
#include "dsp/component/PluginLink.h"
#include "dsp/stages/Maximizer.h"

namespace App {

/// Processes the sum of the bands with a limiter of its own and measures the result.
/// Thread  one trial per thread
class LimiterTrial {
public:
    /// `settings` supplies attack and release. Skips the first `skip` frames of the limiter's output and measures
    /// `length` frames.
    LimiterTrial(uint32_t channels, uint32_t rate, const DSP::Maximizer &settings, LimiterMode mode,
                 double threshold, uint64_t skip, uint64_t length);

    void add(const float *left, const float *right, uint32_t frames);
    /// Levels at the limiter's output, without the make-up gain that raises the threshold to full scale.
    LimiterPoint point();

    static uint32_t delay(); // samples

private:
    /// Ignores the limiter's requests to the plug-in.
    struct NoPlugin final : DSP::PluginLink {
        void registerComponent(DSP::Component *) override {}
        std::span<DSP::Component *const> componentList() const override { return {}; }
        void requestActiveUpdate() override {}
        void requestLatencyUpdate() override {}
        void postMessage(uint32_t) override {}
        void resetChain() override {}
        void propagateMeterEnable() override {}
        void delayCompensationChanged() override {}
    };

    const uint32_t channels;
    const double thresholdDb;
    const uint64_t begin, end; // measured frames of the output
    uint64_t position = 0;
    NoPlugin plugin;
    DSP::Maximizer limiter;
    LoudnessMeter meter;
    std::vector<float> sides[2], interleaved;
};

} // namespace App
