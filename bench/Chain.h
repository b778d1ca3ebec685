#pragma once
#include "bench/Load.h"
#include "plugin/Plugin.h"

namespace Bench {

/// A plug-in without a host, under the standard load: for the cost of the chain without the host shell, and
/// of single stages.
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
