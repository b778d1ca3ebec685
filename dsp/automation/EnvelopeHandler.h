#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/Shared.h"
#include "PluginBase/Util/String.h"
#include "dsp/parameters/Parameter.h"

namespace DSP {

constexpr int64_t kUnitsPerSecond = 10000000; // a time unit is 100 ns

/// Automation of one parameter from startValue at startTime to endValue at endTime. Times in units of 100 ns.
struct EnvelopeSegment {
    /// Curve between the values; any other number means linear. A step holds startValue until endTime.
    enum Curve : uint32_t { step = 1, accelerating = 4, decelerating = 8 };

    int64_t startTime, endTime;
    float startValue, endValue;
    uint64_t reserved;
    uint32_t curve;
};

/// Automation of one parameter, ordered by start time. Where segments overlap, the one that started last applies.
/// After a segment ends, its endValue holds until the next starts. Segments shorter than a sample are ignored.
using Envelope = std::vector<EnvelopeSegment>;

/// The automation envelopes of a component's parameters, for hosts that supply automation in advance: setEnvelope
/// fills them, setEnabled makes the component follow them. They stay empty in VST 2 hosts, which set values
/// directly.
/// Thread  any; the audio thread waits at most while two lists are swapped
class EnvelopeHandler {
public:
    EnvelopeHandler(const String &componentName, uint32_t floats, uint32_t bools, uint32_t ints);

    /// Replaces the automation of a parameter; an empty list removes it. Segments may be in any order. Segments
    /// that do not end after their start or contain non-finite values are dropped.
    void setEnvelope(ParamKind kind, uint32_t index, Envelope segments);
    void setEnabled(bool on) { enabled = on; }
    bool isEnabled() const { return enabled; }
    bool hasEnvelope(ParamKind kind, uint32_t index) const;

    /// Returns the value at a sample, counted from the start of the stream; nullopt before the first segment. V is
    /// float, bool or uint32_t. For bool and uint32_t every segment is a step, and 0.5 and above is true. No
    /// allocation.
    template <class V>
    std::optional<V> valueAt(uint32_t index, int64_t sample, uint32_t rate) const;

    /// Returns the sample nearest to `time`, in units of 100 ns; hosts round the time of a block the same way.
    static int64_t sampleAt(int64_t time, uint32_t rate);

private:
    template <class Handler>
    static auto &envelopes(Handler &handler, ParamKind kind);

    mutable Util::NamedLock lock;
    std::vector<Envelope> floatEnvelopes, boolEnvelopes, intEnvelopes;
    Util::Shared<uint32_t> filled = 0; // non-empty envelopes; if 0, readers skip the lock
    Util::Shared<bool> enabled = false;
};

} // namespace DSP
