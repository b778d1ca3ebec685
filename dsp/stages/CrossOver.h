#pragma once
#include <array>
#include <vector>

#include "PluginBase/Util/AlignedBuffer.h"
#include "dsp/component/ComponentImpl.h"
#include "dsp/stages/FilterBank.h"

namespace DSP {

constexpr int kCutoffs = kBands - 1;

/// Splits the input into four bands with Linkwitz-Riley filters of 4th order. A changed cutoff designs a
/// second set of filters, which is faded in over the one that played.
/// Thread  process: under `lock`, which run holds. reset: takes it. setCutoff: any; it designs under `settingLock` and installs under
///         `lock`, so process waits for a copy, not for a design. setSampleRate: under both. Band switches:
///         any, single words
class CrossOver final : public ComponentImpl<CrossOver> {
public:
    explicit CrossOver(PluginLink &plugin);

    bool isActive() const override { return true; }
    void setSampleRate(uint32_t hz) override;
    /// Writes the bands of the block, with the denormal guard; the input stays.
    void process(const Block &block) override;
    void reset() override;

    float cutoff(uint32_t index) const { return cutoffs[index]; } // Hz
    bool setCutoff(uint32_t index, float hz);
    bool bandBypass(uint32_t band) const { return bypassBits >> band & 1; }
    bool setBandBypass(uint32_t band, bool on);
    bool bandMute(uint32_t band) const { return muteBits >> band & 1; }
    bool setBandMute(uint32_t band, bool on);

    /// `hz` kept in the legal range and `minOctaves` away from its neighbours; changes nothing.
    float limitCutoff(uint32_t index, float hz, float minOctaves) const;
    /// Which cutoffs must return to their defaults when `index` does, so that all stay `minOctaves` apart;
    /// ascending, changes nothing.
    void defaultCutoffsFrom(uint32_t index, std::vector<uint32_t> &changed, float minOctaves) const;

    /// Indices in the parameter lists; add the cutoff or the band.
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
    /// Designs filters for the present cutoffs; false, and nothing done, if these cross.
    bool designFilters(FilterBank &bank, uint32_t hz) const;
    bool setBit(Util::Shared<uint32_t> &bits, uint32_t band, bool on);
    /// Blends the filters that are going into the start of the bands that the coming ones have written. False
    /// if they have lost their stability.
    bool crossFade(const Block &block);
    /// A filter has lost its stability: its output must not reach anything that remembers.
    void dropBlock(const Block &block);

    Util::Shared<uint32_t> sampleRate = 44100; // Hz
    uint32_t fadeLength = 0;                   // samples
    Util::Shared<uint32_t> bypassBits = 0, muteBits = 0;
    std::array<Util::Shared<float>, kCutoffs> cutoffs; // Hz
    std::array<FilterBank, 2> banks;
    Util::AlignedBuffer<float> fadeIn, fadeOut;
    uint32_t activeBank = 0;                                      // the one that plays, or is being faded in
    uint32_t fadeRemaining = 0;                                   // samples
    uint8_t guardPhase = 0;                                       // all bands start from the same
    Util::AlignedBuffer<float> fadeScratchLeft, fadeScratchRight; // four band pieces each
};

} // namespace DSP
