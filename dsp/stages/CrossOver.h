#pragma once
#include <array>
#include <vector>

#include "PluginBase/Util/AlignedBuffer.h"
#include "dsp/component/ComponentImpl.h"
#include "dsp/stages/FilterBank.h"

namespace DSP {

constexpr int kCutoffs = kBands - 1;

/// Splits the input into four bands with fourth-order Linkwitz-Riley filters. A changed cutoff designs a second
/// filter bank and cross-fades to it.
/// Thread  process: audio, under `lock`. reset: any, takes `lock`. setCutoff: any; designs under `settingLock` and
///         installs under `lock`, so process waits for a copy only. setSampleRate: takes both locks. Band
///         switches: any, no lock
class CrossOver final : public ComponentImpl<CrossOver> {
public:
    explicit CrossOver(PluginLink &plugin);

    bool isActive() const override { return true; }
    void setSampleRate(uint32_t hz) override;
    /// Writes the block's bands with the denormal guard added; does not change the input.
    void process(const Block &block) override;
    void reset() override;

    float cutoff(uint32_t index) const { return cutoffs[index]; } // Hz
    bool setCutoff(uint32_t index, float hz);
    bool bandBypass(uint32_t band) const { return bypassBits >> band & 1; }
    bool setBandBypass(uint32_t band, bool on);
    bool bandMute(uint32_t band) const { return muteBits >> band & 1; }
    bool setBandMute(uint32_t band, bool on);

    /// Returns `hz` limited to the legal range and to at least `minOctaves` from the neighbouring cutoffs.
    float limitCutoff(uint32_t index, float hz, float minOctaves) const;
    /// Fills `changed`, in ascending order, with the cutoffs to reset together with `index` so that all stay
    /// `minOctaves` apart. Does not change a cutoff.
    void defaultCutoffsFrom(uint32_t index, std::vector<uint32_t> &changed, float minOctaves) const;

    /// Indices in the parameter lists; add the index of the cutoff or band.
    struct Param {
        enum Float : uint32_t { cutoff };
        enum Bool : uint32_t { bandBypass, bandMute = bandBypass + kBands };
    };

    static constexpr FloatRange kCutoffRangeHz = {20.0f, 20000.0f};
    static constexpr std::array<float, kCutoffs> kDefaultCutoffsHz = {120.0f, 2000.0f, 10000.0f};

private:
    void declareParameters();
    void makeRoomForFade(uint32_t hz);
    void updateFade();
    /// Designs filters for the current cutoffs. Returns false and leaves `bank` unchanged if these are not
    /// ascending.
    bool designFilters(FilterBank &bank, uint32_t hz) const;
    bool setBit(Util::Shared<uint32_t> &bits, uint32_t band, bool on);
    /// Cross-fades from the old filters to the new ones, whose output is already in the block's bands. Returns
    /// false if an old filter is unstable.
    bool crossFade(const Block &block);
    /// Clears the filters and silences the block. For an unstable filter, whose output would corrupt the state of
    /// later stages.
    void dropBlock(const Block &block);

    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    uint32_t fadeLength = 0;                   // samples
    Util::Shared<uint32_t> bypassBits = 0, muteBits = 0;
    std::array<Util::Shared<float>, kCutoffs> cutoffs; // Hz
    std::array<FilterBank, 2> banks;
    Util::AlignedBuffer<float> fadeIn, fadeOut;
    uint32_t activeBank = 0;                                      // during a cross-fade: the new one
    uint32_t fadeRemaining = 0;                                   // samples
    uint8_t guardPhase = 0;                                       // shared by all bands
    Util::AlignedBuffer<float> fadeScratchLeft, fadeScratchRight; // old filters' output, all four bands
};

} // namespace DSP
