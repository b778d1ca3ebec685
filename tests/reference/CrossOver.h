#pragma once
#include <array>
#include <cstdint>
#include <vector>

namespace Reference {

/// Two identical second-order sections in double precision, with taps rounded to 32 bits.
struct Cascade {
    double b[3] = {1, 0, 0}, a[3] = {1, 0, 0};
    double designGain = 1;
    struct Section {
        double x1 = 0, x2 = 0, y1 = 0, y2 = 0;
    } sections[2];

    static Cascade design(bool highPass, double hz, double sampleRate);
    float run(float x);
    void clear() { sections[0] = sections[1] = {}; }
};

/// Splits one or two channels into four bands and adds the denormal guard to each. A new cutoff crossfades from the old
/// filters to new ones.
class CrossOver {
public:
    CrossOver();
    void setSampleRate(uint32_t hz);
    void setCutoff(int index, float hz);
    void reset();
    /// Right pointers are null for mono.
    void process(uint32_t frames, const float *left, const float *right, float *const *bandsLeft,
                 float *const *bandsRight);

private:
    struct Band {
        int filters = 0; // 0 to 2
        Cascade first[2], second[2];
        float gain = 1;
    };
    using FilterSet = std::array<Band, 4>;

    void updateFade();
    void designFilters(FilterSet &set) const;
    /// Filters one channel. Multiplies the output by `table`, starting at entry `offset`, until the table ends.
    void processSet(FilterSet &set, int channel, uint32_t frames, const float *in, float *const *out,
                    const std::vector<float> *table, uint32_t offset) const;

    uint32_t sampleRate = 44100;
    float cutoffs[3] = {120, 2000, 10000};
    FilterSet sets[2];
    std::vector<float> fadeIn, fadeOut;
    int activeSet = 0;
    uint32_t fadeRemaining = 0;
    uint8_t guardPhase = 0;
};

} // namespace Reference
