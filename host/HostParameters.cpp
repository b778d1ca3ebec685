#include <cmath>
#include <iterator>
#include <type_traits>

#include "dsp/component/ParameterAccess.h"
#include "dsp/numerics/Math.h"
#include "host/HostText.h"
#include "host/VSTPlugin.h"

// The host's view of the parameters: a flat list of numbers from 0 to 1, all of them linear in the value.

namespace {

using DSP::ParamKind;

// Alternatives of falling length may follow a line feed; the longest that fits is shown.
constexpr const char *kHostNames[] = {
    "Gain",
    "Crossover Low Cutoff",
    "Crossover Mid Cutoff",
    "Crossover High Cutoff",
    "Limiter Threshold",
    "Limiter Margin",
    "Limiter Attack",
    "Limiter Release",
    "Limiter Bypass",
    "Limiter Brickwall Mode",
    "Band 1 Comp Threshold",
    "Band 2 Comp Threshold",
    "Band 3 Comp Threshold",
    "Band 4 Comp Threshold",
    "Band 1 Gain",
    "Band 2 Gain",
    "Band 3 Gain",
    "Band 4 Gain",
    "Band 1 Ratio",
    "Band 2 Ratio",
    "Band 3 Ratio",
    "Band 4 Ratio",
    "Band 1 Attack",
    "Band 2 Attack",
    "Band 3 Attack",
    "Band 4 Attack",
    "Band 1 Release",
    "Band 2 Release",
    "Band 3 Release",
    "Band 4 Release",
    "Dynamics Band Link",
    "Band 1 Bypass",
    "Band 2 Bypass",
    "Band 3 Bypass",
    "Band 4 Bypass",
    "Band 1 Solo",
    "Band 2 Solo",
    "Band 3 Solo",
    "Band 4 Solo",
};

// Far beyond the 8 characters of the interface; hosts of our time bring room for 24 and more.
constexpr uint32_t kLongestName = 23, kLongestShortName = 15, kLongestDisplay = 23;
constexpr int32_t kDisplayDecimals = 2;

/// What `work` gives for the type of the parameter's value.
template <class Work>
auto withKind(ParamKind kind, Work work)
{
    switch (kind) {
    case ParamKind::real: return work.template operator()<float>();
    case ParamKind::boolean: return work.template operator()<bool>();
    default: return work.template operator()<uint32_t>();
    }
}

// Linear between the bounds, in double, which holds a float and a uint32_t exactly.
template <class V>
double toHost(V value, DSP::Range<V> range)
{
    const double low = range.minimum, high = range.maximum;
    return (value - low) / (high - low);
}

template <class V>
V fromHost(double h, DSP::Range<V> range)
{
    const double low = range.minimum, high = range.maximum, number = low + h * (high - low);
    if constexpr (std::is_same_v<V, float>)
        return static_cast<float>(number);
    else
        return static_cast<V>(DSP::Math::roundHalfAwayFromZero(number));
}

/// Present value in host terms.
double hostValue(const HostParam &param)
{
    return withKind(param.kind, [&]<class V>() {
        using Access = DSP::ParameterAccess<V>;
        return toHost(Access::value(*param.component, param.index),
                      Access::range(*param.component, param.index));
    });
}

/// Sets the parameter if that changes it; true if it did.
bool setFromHost(const HostParam &param, double h)
{
    return withKind(param.kind, [&]<class V>() {
        using Access = DSP::ParameterAccess<V>;
        const V value = fromHost(h, Access::range(*param.component, param.index));
        if (!std::isfinite(static_cast<double>(value)) ||
            value == Access::value(*param.component, param.index))
            return false;
        Access::set(*param.component, param.index, value);
        return true;
    });
}

String floatText(const DSP::Component &component, uint32_t i)
{
    const float value = component.floatParamValue(i);
    if (component.floatParamShowsMinusInf(i) && value <= component.floatParamRange(i).minimum) return "-Inf";
    return String::number(value, kDisplayDecimals);
}

String boolText(const DSP::Component &component, uint32_t i)
{
    const bool value = component.boolParamValue(i);
    if (!component.boolParamHasValueNames(i)) return value ? "True" : "False";
    std::vector<String> names;
    component.boolParamValueNames(i, names);
    return names.size() == 2 ? fitToLength(names[value], kLongestDisplay, '\n') : String();
}

String intText(const DSP::Component &component, uint32_t i)
{
    const uint32_t value = component.intParamValue(i);
    std::vector<String> names;
    component.intParamValueNames(i, names);
    return value < names.size() ? names[value] : String::number(value);
}

String valueText(const HostParam &param)
{
    switch (param.kind) {
    case ParamKind::real: return floatText(*param.component, param.index);
    case ParamKind::boolean: return boolText(*param.component, param.index);
    case ParamKind::integer: return intText(*param.component, param.index);
    }
    return {};
}

String unitText(const HostParam &param)
{
    return withKind(param.kind, [&]<class V>() {
        return String(DSP::ParameterAccess<V>::unit(*param.component, param.index));
    });
}

/// How the editor's gesture on a parameter stands with the host.
struct Gesture {
    OptionalIndex hostIndex;
    bool editing; // the host has been told of its begin
};

Gesture gestureOf(ParamKind kind, const DSP::Component &component, uint32_t i)
{
    return withKind(kind, [&]<class V>() {
        using Access = DSP::ParameterAccess<V>;
        return Gesture{Access::hostIndex(component, i), Access::isEdited(component, i)};
    });
}

} // namespace

template <class V>
void VSTPlugin::listParameters(DSP::Component &component)
{
    using Access = DSP::ParameterAccess<V>;
    for (uint32_t i = 0; i < Access::count(component); ++i) {
        if (!Access::isAutomatable(component, i)) continue;
        Access::setHostIndex(component, i, static_cast<uint32_t>(hostParams.size()));
        hostParams.push_back({Access::kind, &component, i});
    }
}

void VSTPlugin::buildHostParams()
{
    for (DSP::Component *component : componentList()) {
        listParameters<float>(*component);
        listParameters<bool>(*component);
        listParameters<uint32_t>(*component);
    }
    numParams = cEffect.numParams = static_cast<int32_t>(hostParams.size());
}

const HostParam *VSTPlugin::hostParam(int32_t index) const
{
    return static_cast<uint32_t>(index) < hostParams.size() ? &hostParams[static_cast<uint32_t>(index)]
                                                            : nullptr;
}

void VSTPlugin::setParameter(int32_t index, float value)
{
    const HostParam *const param = hostParam(index);
    if (!param || !std::isfinite(value)) return;
    if (setFromHost(*param, value)) requestRefresh();
}

float VSTPlugin::getParameter(int32_t index)
{
    const HostParam *const param = hostParam(index);
    return param ? static_cast<float>(hostValue(*param)) : 0.0f;
}

void VSTPlugin::getParameterLabel(int32_t index, char *label)
{
    if (const HostParam *const param = hostParam(index))
        writeText(unitText(*param), kVstMaxLabelLen - 1, label);
}

void VSTPlugin::getParameterDisplay(int32_t index, char *text)
{
    if (const HostParam *const param = hostParam(index)) writeText(valueText(*param), kLongestDisplay, text);
}

void VSTPlugin::getParameterName(int32_t index, char *text)
{
    if (!hostParam(index) || static_cast<size_t>(index) >= std::size(kHostNames)) return;
    const uint32_t width = longNames ? kLongestName : kLongestShortName;
    const String name = fitToLength(kHostNames[index], width, '\n');
    writeText(name.isEmpty() ? String("?") : name, width, text);
}

void VSTPlugin::notifyParameter(ParamKind kind, EditPhase phase, DSP::Component *component, uint32_t index,
                                const float *floatValue, const bool *boolValue, const uint32_t *intValue)
{
    const Gesture gesture = gestureOf(kind, *component, index);
    if (!gesture.hostIndex) return;
    const auto hostIndex = static_cast<int32_t>(gesture.hostIndex.value);
    switch (phase) {
    case EditPhase::begin: beginEdit(hostIndex); return;
    case EditPhase::end: endEdit(hostIndex); return;
    case EditPhase::value: break;
    }

    double h = 0.0;
    if (kind == ParamKind::real && floatValue)
        h = toHost(*floatValue, component->floatParamRange(index));
    else if (kind == ParamKind::boolean && boolValue)
        h = *boolValue ? 1.0 : 0.0;
    else if (kind == ParamKind::integer && intValue)
        h = toHost(*intValue, component->intParamRange(index));
    else
        return;
    // A change by itself is a whole gesture; what the host brings about in the middle of it belongs to it.
    const auto tell = [&](EditPhase own) {
        editParameter(kind, own, component, index, nullptr, nullptr, nullptr);
    };
    if (!gesture.editing) tell(EditPhase::begin);
    setParameterAutomated(hostIndex, static_cast<float>(h));
    if (!gesture.editing) tell(EditPhase::end);
}
