#pragma once
#include "dsp/component/ComponentImpl.h"

namespace DSP::Meter {

/// Sample-peak meter with peak hold, after the last stage. Linear values.
/// Thread  measure: audio. read: any other; a read that coincides with a new held peak may return the same peak
///         twice
class Level final : public ComponentImpl<Level> {
public:
    explicit Level(PluginLink &plugin);

    bool isActive() const override { return true; }
    void suspend() override { reset(); }
    void reset() override;

    /// `right` is null for mono; both channels then have the same levels.
    void measure(uint32_t frames, const float *left, const float *right);
    /// Returns peaks and held peaks, and clears the peaks. Held peaks stay until their hold time ends.
    void read(float &peakLeft, float &peakRight, float &heldLeft, float &heldRight);

    /// Hold time in samples, at every sample rate: 0.4 s at 44.1 kHz.
    static constexpr uint32_t kHoldSamples = 17640;

private:
    struct Channel {
        Util::Shared<float> peak = 0.0f; // largest magnitude since the last read
        Util::Shared<float> held = 0.0f;
        uint32_t holdCount = 0; // samples since `held` was last raised
        void measure(uint32_t frames, const float *samples);
        /// Slow path: updates peak and hold sample by sample.
        void follow(uint32_t frames, const float *samples);
    };
    Channel left, right;
};

} // namespace DSP::Meter
