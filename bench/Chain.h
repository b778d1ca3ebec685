#pragma once
#include "bench/Load.h"
#include "plugin/Plugin.h"

namespace Bench {

/// A plug-in without a host, under the standard load: what the chain costs without the record's shell, and
/// the home of single stages.
class Chain final : public Plugin {
public:
    explicit Chain(bool brickwall = false) : Plugin(kVst)
    {
        setStandard(transformHandle(), brickwall);
        setChannelCount(2, 2);
        resume(kRate);
    }
    void notifyParameter(const DSP::ParameterAddress &, EditPhase, const DSP::ParameterValue &) override {}
};

} // namespace Bench
