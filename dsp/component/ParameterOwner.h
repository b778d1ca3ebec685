#pragma once
#include "dsp/parameters/Parameter.h"

namespace DSP {

/// Access to a component's parameters by kind and index.
/// Thread  any; each component documents the locks that its setters take
/// Errors  indices are not checked; they must be below numParams
class ParameterOwner {
public:
    virtual uint32_t numParams(ParamKind kind) const = 0;
    virtual const ParamRecord &param(ParamKind kind, uint32_t i) const = 0;
    virtual ParamRecord &param(ParamKind kind, uint32_t i) = 0;
    virtual ParameterValue paramValue(ParamKind kind, uint32_t i) const = 0;
    /// Calls the parameter's setter and returns true if the value changed. `value` must match `kind`.
    virtual bool setParamValue(ParamKind kind, uint32_t i, ParameterValue value) = 0;

// Named operations for one kind, such as floatParamValue; V is its value type.
#define TESSARINE_PARAM_FAMILY(Kind, kindName, list, V)                                                      \
    uint32_t num##Kind##Params() const { return numParams(list); }                                           \
    V kindName##ParamValue(uint32_t i) const { return std::get<V>(paramValue(list, i)); }                    \
    void set##Kind##ParamValue(uint32_t i, V value) { setParamValue(list, i, value); }                       \
    const String &kindName##ParamName(uint32_t i) const { return param(list, i).name; }                      \
    const String &kindName##ParamLabel(uint32_t i) const { return param(list, i).label; }                    \
    Range<V> kindName##ParamRange(uint32_t i) const { return rangeOf<V>(param(list, i)); }                   \
    V kindName##ParamDefault(uint32_t i) const { return std::get<V>(param(list, i).defaultValue); }          \
    ParamGroup kindName##ParamGroup(uint32_t i) const { return param(list, i).group; }                       \
    bool kindName##ParamAutomatable(uint32_t i) const { return param(list, i).automatable; }                 \
    uint32_t kindName##ParamPersistence(uint32_t i) const { return param(list, i).persistence; }             \
    uint32_t kindName##ParamScope(uint32_t i) const { return param(list, i).scope; }                         \
    uint32_t kindName##ParamHighlight(uint32_t i) const { return param(list, i).highlight; }                 \
    void set##Kind##ParamHighlight(uint32_t i, uint32_t c) { setHighlight(param(list, i), c); }              \
    OptionalIndex kindName##ParamHostIndex(uint32_t i) const { return param(list, i).hostIndex; }            \
    void set##Kind##ParamHostIndex(uint32_t i, OptionalIndex host) { param(list, i).hostIndex = host; }      \
    bool kindName##ParamEditing(uint32_t i) const { return param(list, i).editing; }                         \
    void set##Kind##ParamEditing(uint32_t i, bool on) { param(list, i).editing = on; }                       \
    bool kindName##ParamHasValueNames(uint32_t i) const { return param(list, i).hasValueNames(); }           \
    void kindName##ParamValueNames(uint32_t i, std::vector<String> &out) const                               \
    {                                                                                                        \
        out = param(list, i).valueNames;                                                                     \
    }

    TESSARINE_PARAM_FAMILY(Float, float, ParamKind::real, float)
    TESSARINE_PARAM_FAMILY(Bool, bool, ParamKind::boolean, bool)
    TESSARINE_PARAM_FAMILY(Int, int, ParamKind::integer, uint32_t)
    TESSARINE_PARAM_FAMILY(Extra, extra, ParamKind::extra, uint32_t)
#undef TESSARINE_PARAM_FAMILY

    bool floatParamShowsMinusInf(uint32_t i) const { return param(ParamKind::real, i).showsMinusInf; }
    void setFloatParamShowsMinusInf(uint32_t i, bool on) { param(ParamKind::real, i).showsMinusInf = on; }

protected:
    ParameterOwner() = default;
    ~ParameterOwner() = default;

    static void setHighlight(ParamRecord &record, uint32_t colour)
    {
        if (colour <= kNoHighlight) record.highlight = colour;
    }

private:
    template <class V>
    static Range<V> rangeOf(const ParamRecord &record)
    {
        return {std::get<V>(record.range.minimum), std::get<V>(record.range.maximum)};
    }
};

} // namespace DSP
