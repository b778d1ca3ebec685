#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "tests/reference/Settings.h"

namespace Reference {

/// Magnitude spectrum of a mono mix, by a recursive transform in double precision.
class Spectrum {
public:
    /// Analyses a full frame after `samplesLate` more samples.
    explicit Spectrum(uint32_t samplesLate = 0) : stagger(samplesLate) { rebuild(); }
    void set(const SpectrumSettings &next);
    void setSampleRate(uint32_t hz);
    void reset();
    /// `right` is null for mono.
    void feed(uint32_t frames, const float *left, const float *right);
    /// Returns the latest magnitudes; nullopt if there are none since the last call. Shape: [size / 2 + 1]
    std::optional<std::vector<float>> read();

private:
    void rebuild();
    void analyse();
    uint32_t size() const { return 512u << settings.size; }
    uint32_t overlapLength() const;

    const uint32_t stagger;
    uint32_t sampleRate = 44100;
    SpectrumSettings settings;
    std::vector<float> frame, pending, magnitudes, weights;
    uint32_t untilAnalysis = 0;
    uint8_t guardPhase = 0;
    bool hasNewData = false, wasRead = false;
};

} // namespace Reference
