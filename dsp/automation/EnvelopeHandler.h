#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/Shared.h"
#include "PluginBase/Util/String.h"
#include "dsp/parameters/Parameter.h"

namespace DSP {

/// A stretch of automation of one parameter, from startValue at startTime to endValue at endTime. Times in
/// units of 100 ns.
struct EnvelopeSegment {
    /// Shape between the values; any other number is linear. A step stays at startValue until the end.
    enum Curve : uint32_t { step = 1, accelerating = 4, decelerating = 8 };

    int64_t startTime, endTime;
    float startValue, endValue;
    uint64_t reserved;
    uint32_t curve;
};

/// Automation of one parameter, ordered by time. Of segments that overlap, the one that started last rules;
/// what has ended holds its endValue until the next starts. A segment shorter than a sample is left out.
using Envelope = std::vector<EnvelopeSegment>;

/// The envelopes of a component's parameters, for a host that hands over automation ahead of time: it fills
/// them with setEnvelope and has the component follow them with setEnabled. A host that sets values directly,
/// as VST 2 does, leaves all empty.
/// Thread  any; the audio thread waits for an exchange of two lists at most
class EnvelopeHandler {
public:
    EnvelopeHandler(const String &componentName, uint32_t floats, uint32_t bools, uint32_t ints);

    /// Replaces the automation of a parameter; an empty list ends it. Segments may come in any order. Those
    /// that do not end after their start, or hold non-finite values, are left out.
    void setEnvelope(ParamKind kind, uint32_t index, Envelope segments);
    void setEnabled(bool on) { enabled = on; }
    bool isEnabled() const { return enabled; }
    bool hasEnvelope(ParamKind kind, uint32_t index) const;

    /// The value at a sample, counted from the start of the stream; nothing before the first segment. V is
    /// float, or bool or uint32_t for which every segment is a step and 0.5 is true. No allocation.
    template <class V>
    std::optional<V> valueAt(uint32_t index, int64_t sample, uint32_t rate) const;

    /// The sample nearest to a time in units of 100 ns, as hosts round the time of a block.
    static int64_t sampleAt(int64_t time, uint32_t rate);

private:
    template <class Handler>
    static auto &envelopes(Handler &handler, ParamKind kind);

    mutable Util::NamedLock lock;
    std::vector<Envelope> floatEnvelopes, boolEnvelopes, intEnvelopes;
    Util::Shared<uint32_t> filled = 0; // envelopes that are not empty: most plug-ins have none to look for
    Util::Shared<bool> enabled = false;
};

} // namespace DSP
