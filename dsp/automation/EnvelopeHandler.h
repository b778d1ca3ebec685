#pragma once
#include <algorithm>
#include <cstdint>
#include <vector>

#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/Shared.h"
#include "PluginBase/Util/String.h"
#include "dsp/parameters/Parameter.h"

namespace DSP {

/// A stretch of automation of one parameter, from startValue at startTime to endValue at endTime. Times in
/// units of 100 ns.
struct EnvelopeSegment {
    /// How the value travels; any other number is linear. A step stays at startValue until the end.
    enum Curve : uint32_t { step = 1, accelerating = 4, decelerating = 8 };

    int64_t startTime, endTime;
    float startValue, endValue;
    uint64_t reserved;
    uint32_t curve;
};

/// Automation of one parameter, ordered by time. Of segments that overlap, the one that started last rules;
/// what has ended holds its endValue until the next starts. A segment shorter than a sample is left out.
using Envelope = std::vector<EnvelopeSegment>;

/// Where in a block an envelope is read: at its first sample and every `step` samples from there.
struct EnvelopeGrid {
    int64_t startTime; // of the first sample, 100 ns
    uint32_t sampleRate, frames, step;

    uint32_t steps() const { return frames / step + (frames % step != 0); }
    int64_t timeAt(uint32_t frame) const
    {
        return startTime + int64_t{frame} * 10000000 / std::max(sampleRate, 1u);
    }
};

/// Holds each value read to within `limit` of the one before; 0 is no limit.
struct SlewLimit {
    float limit = 0.0f;
    std::vector<float> *raw = nullptr; // takes the values as they would be without the limit
};

/// The envelopes of a component's parameters, for a host that hands over automation ahead of time: it fills
/// them with setEnvelope and has the component follow them with setEnabled. A host that sets values directly,
/// as VST 2 does, leaves all empty.
/// Thread  any; the audio thread waits for an exchange of two lists at most
class EnvelopeHandler {
public:
    EnvelopeHandler(const String &componentName, uint32_t floats, uint32_t bools, uint32_t ints);

    /// Replaces the automation of a parameter; an empty list ends it. Segments may come in any order. Those
    /// that do not end after their start, or with values that are no numbers, are left out.
    void setEnvelope(ParamKind kind, uint32_t index, Envelope segments);
    void setEnabled(bool on) { enabled = on; }
    bool isEnabled() const { return enabled; }
    bool hasEnvelope(ParamKind kind, uint32_t index) const;

    /// Reads an envelope into `values`, one for each step of the grid, `initial` where nothing has started
    /// yet. True if a segment that rules is on its way in this block. Allocates only for more steps than ever
    /// before.
    bool evaluateFloats(uint32_t index, const EnvelopeGrid &grid, float initial, std::vector<float> &values,
                        SlewLimit slew = {}) const;
    /// As evaluateFloats, with every segment a step; a half and more is true.
    bool evaluateBools(uint32_t index, const EnvelopeGrid &grid, bool initial,
                       std::vector<bool> &values) const;
    bool evaluateInts(uint32_t index, const EnvelopeGrid &grid, uint32_t initial,
                      std::vector<uint32_t> &values) const;

private:
    template <class Handler>
    static auto &envelopes(Handler &handler, ParamKind kind);

    mutable Util::NamedLock lock;
    std::vector<Envelope> floatEnvelopes, boolEnvelopes, intEnvelopes;
    Util::Shared<uint32_t> filled = 0; // envelopes that are not empty: most plug-ins have none to look for
    Util::Shared<bool> enabled = false;
};

} // namespace DSP
