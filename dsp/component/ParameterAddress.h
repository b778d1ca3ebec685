#pragma once
#include "dsp/component/Component.h"

namespace DSP {

/// Identifies one parameter of a plug-in.
struct ParameterAddress {
    Component *component; // not owned
    ParamKind kind;
    uint32_t index; // in the component's list of that kind

    ParamRecord &record() const { return component->param(kind, index); }
    ParameterValue value() const { return component->paramValue(kind, index); }
    /// Returns true if the value changed.
    bool set(const ParameterValue &value) const { return component->setParamValue(kind, index, value); }
};

} // namespace DSP
