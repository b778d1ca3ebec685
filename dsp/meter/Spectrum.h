#pragma once
#include <memory>

#include "PluginBase/Util/AlignedBuffer.h"
#include "dsp/component/ComponentImpl.h"
#include "dsp/kernels/Fft.h"
#include "dsp/meter/PublishedSpectrum.h"

namespace DSP::Meter {

/// Magnitude spectrum of one band: linear amplitude per bin, with peaks that decay by 120 dB per second.
/// Thread  feed: audio; takes `lock`. readSpectrum: one other thread, wait-free. Setters of size, overlap and
///         window: any; they prepare the new analysis under `settingLock` and install it under `lock`
class Spectrum final : public ComponentImpl<Spectrum> {
public:
    Spectrum(PluginLink &plugin, const String &name);

    bool isActive() const override { return true; }
    /// Replaces the stored window size with one suited to the sample rate.
    void setSampleRate(uint32_t hz) override;
    void reset() override;

    /// Adds a block's mono mix and analyses every full frame; `right` is null for mono.
    void feed(uint32_t frames, const float *left, const float *right);
    /// Delays the analysis of a full frame by `samples`, less than a hop, so that several meters do not compute
    /// their FFTs in the same block. Call before playback.
    void setStagger(uint32_t samples);
    /// Copies the newest spectrum to `destination`, which has space for kMostMagnitudes floats. Returns false if
    /// there is no new one since the last call.
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
    /// Starts a new analysis with the current settings. Allocates before it takes `lock`.
    void rebuild();
    /// Appends samples to the frame, which must have space for `count`.
    void append(const float *left, const float *right, uint32_t count);
    void completeFrame();
    void analyse(const float *samples);

    /// Data that depends on size, overlap and window.
    struct Analysis {
        Analysis(uint32_t sizeIndex, uint32_t overlapIndex, uint32_t window);
        uint32_t length, overlapLength; // samples
        FftPlan fftPlan;
        Util::AlignedBuffer<float> windowTable, work;
    };

    /// Decay factor of the peaks per hop.
    float hopDecay() const;

    std::unique_ptr<Analysis> analysis;
    float decay = 1.0f;
    Util::AlignedBuffer<float> frame, magnitudes;
    Util::AlignedBuffer<float> waitingFrame; // full frame, analysed after `waitingSamples` more samples
    uint32_t stagger = 0, waitingSamples = 0;
    uint8_t guardPhase = 0;
    uint32_t framePosition = 0; // next free index in frame
    PublishedSpectrum published{kMostMagnitudes};
    Util::Shared<bool> wasRead = false;        // the newest spectrum was fetched
    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    Util::Shared<bool> onInput = false;
    Util::Shared<uint32_t> windowSize = 3, overlap = 5, windowType = hann;
};

} // namespace DSP::Meter
