#pragma once
#include <cstdint>
#include <vector>

#include "PluginBase/Util/NamedLock.h"
#include "PluginBase/Util/String.h"
#include "dsp/Parameter.h"

namespace DSP {

/// A stretch of automation of one parameter. Times in units of 100 ns.
struct EnvelopeSegment {
    int64_t startTime, endTime;
    float startValue, endValue;
    uint64_t reserved;
    uint32_t curve;
};

/// Automation of one parameter, ordered by time.
using Envelope = std::vector<EnvelopeSegment>;

/// The envelopes of a component's parameters. A host that sets values directly, as VST 2 does, leaves all
/// empty.
class EnvelopeHandler {
public:
    EnvelopeHandler(const String &componentName, uint32_t floats, uint32_t bools, uint32_t ints)
        : lock(String("%1::EnvelopeHandler").arg(componentName)),
          floatEnvelopes(floats),
          boolEnvelopes(bools),
          intEnvelopes(ints)
    {
    }

    bool hasEnvelope(ParamKind kind, uint32_t index) const
    {
        const auto &list = kind == ParamKind::real      ? floatEnvelopes
                           : kind == ParamKind::boolean ? boolEnvelopes
                                                        : intEnvelopes;
        return !list[index].empty();
    }

private:
    Util::NamedLock lock;
    std::vector<Envelope> floatEnvelopes, boolEnvelopes, intEnvelopes;
};

} // namespace DSP
