#pragma once
#include "dsp/component/ComponentImpl.h"

namespace DSP::Meter {

/// Sample-peak meter of the final output, with a held peak. Linear values.
/// Thread  measure(): audio. read(): any other; a read that coincides with a new held peak may return the same
///         peak twice
class Level final : public ComponentImpl<Level> {
public:
    explicit Level(PluginLink &plugin);

    bool isActive() const override { return true; }
    void suspend() override { reset(); }
    void reset() override;

    /// `right` is null for mono; both channels then read the same.
    void measure(uint32_t frames, const float *left, const float *right);
    /// Hands out peaks and held peaks and clears the peaks. The held values stay until their time is over.
    void read(float &peakLeft, float &peakRight, float &heldLeft, float &heldRight);

    /// Samples for which a peak is held, at every rate.
    static constexpr uint32_t kHoldSamples = 17640;

private:
    struct Channel {
        Util::Shared<float> peak = 0.0f; // largest magnitude since the last read
        Util::Shared<float> held = 0.0f;
        uint32_t holdCount = 0; // samples since `held` was last raised
        void measure(uint32_t frames, const float *samples);
        /// The plain rule, a sample after the other.
        void follow(uint32_t frames, const float *samples);
    };
    Channel left, right;
};

} // namespace DSP::Meter
