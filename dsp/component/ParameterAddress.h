#pragma once
#include "dsp/component/Component.h"

namespace DSP {

/// Names one parameter of a plug-in.
struct ParameterAddress {
    Component *component; // not owned
    ParamKind kind;
    uint32_t index; // in the component's list of that kind

    ParamRecord &record() const { return component->param(kind, index); }
    ParameterValue value() const { return component->paramValue(kind, index); }
    /// True if the value moved.
    bool set(const ParameterValue &value) const { return component->setParamValue(kind, index, value); }
};

} // namespace DSP
