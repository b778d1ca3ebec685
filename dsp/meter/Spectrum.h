#pragma once
#include <memory>

#include "PluginBase/Util/AlignedBuffer.h"
#include "dsp/component/ComponentImpl.h"
#include "dsp/kernels/Fft.h"
#include "dsp/meter/PublishedSpectrum.h"

namespace DSP::Meter {

/// Magnitude spectrum of one band: linear amplitude per bin, peaks held and falling by 120 dB a second.
/// Thread  feed(): audio, under `lock`; it analyses whenever a frame is full. readSpectrum(): one other, no
///         lock and no waiting. Setters of size, overlap and window: any; they prepare under `settingLock`
///         and exchange under `lock`
class Spectrum final : public ComponentImpl<Spectrum> {
public:
    Spectrum(PluginLink &plugin, const String &name);

    bool isActive() const override { return true; }
    /// Picks a window size that suits the rate, over the stored one.
    void setSampleRate(uint32_t hz) override;
    void reset() override;

    /// Takes the mono mix of a block; `right` is null for mono.
    void feed(uint32_t frames, const float *left, const float *right);
    /// Lets the analysis wait for so many samples after a frame is full, fewer than a hop, so that the meters
    /// of several bands do not all transform in the same block. Before playing.
    void setStagger(uint32_t samples);
    /// Copies the newest spectrum, if there is one since the last call, to at least kMostMagnitudes floats.
    bool readSpectrum(float *destination, uint32_t &count);

    enum WindowType : uint32_t { hamming, blackman, bartlett, kaiser, hann };

    bool getOnInput() const { return onInput; }
    uint32_t getWindowSize() const { return windowSize; }
    uint32_t getOverlap() const { return overlap; }
    uint32_t getWindowType() const { return windowType; }
    bool setOnInput(bool on) { return onInput.change(on); }
    bool setWindowSize(uint32_t index);
    bool setOverlap(uint32_t index);
    bool setWindowType(uint32_t type);

    /// Indices in the parameter lists.
    struct Param {
        enum Bool : uint32_t { onInput };
        enum Int : uint32_t { windowSize, overlap, windowType };
    };

    static constexpr uint32_t kSizes[] = {512, 1024, 2048, 4096, 8192};
    static constexpr uint32_t kMostSamples = 8192;
    static constexpr uint32_t kMostMagnitudes = kMostSamples / 2 + 1;
    static constexpr float kDecayDbPerSecond = 120.0f;

private:
    void declareParameters();
    bool choose(Util::Shared<uint32_t> &setting, uint32_t value);
    /// Starts over with an analysis for the present settings, which is made before the lock is taken.
    void rebuild();
    /// Takes `count` samples that fit the frame.
    void append(const float *left, const float *right, uint32_t count);
    void completeFrame();
    void analyse(const float *samples);

    /// All that depends on size, overlap and window.
    struct Analysis {
        Analysis(uint32_t sizeIndex, uint32_t overlapIndex, uint32_t window);
        uint32_t length, overlapLength; // samples of a frame, and carried from one to the next
        FftPlan fftPlan;
        Util::AlignedBuffer<float> windowTable, work;
    };

    /// What a peak keeps over one hop.
    float hopDecay() const;

    std::unique_ptr<Analysis> analysis;
    float decay = 1.0f;
    Util::AlignedBuffer<float> frame, magnitudes;
    Util::AlignedBuffer<float> waitingFrame; // full, to be analysed when `waitingSamples` more have come
    uint32_t stagger = 0, waitingSamples = 0;
    uint8_t guardPhase = 0;
    uint32_t framePosition = 0; // next free place in frame
    PublishedSpectrum published{kMostMagnitudes};
    Util::Shared<bool> wasRead = false;        // somebody has fetched what the last frame published
    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    Util::Shared<bool> onInput = false;
    Util::Shared<uint32_t> windowSize = 3, overlap = 5, windowType = hann;
};

} // namespace DSP::Meter
