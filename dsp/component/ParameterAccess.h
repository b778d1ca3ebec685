#pragma once
#include "dsp/component/Component.h"

namespace DSP {

/// The parameters of the kind whose values are of type V, for code that is written once for all such types.
template <class V>
struct ParameterAccess {
    static constexpr ParamKind kind = kKindOf<V>;
    static uint32_t count(const Component &c) { return c.numParams(kind); }
    static V value(const Component &c, uint32_t i) { return std::get<V>(c.paramValue(kind, i)); }
    static void set(Component &c, uint32_t i, V v) { c.setParamValue(kind, i, v); }
    static bool isAutomatable(const Component &c, uint32_t i) { return c.param(kind, i).automatable; }
    static bool isEdited(const Component &c, uint32_t i) { return c.param(kind, i).editing; }
};

} // namespace DSP
