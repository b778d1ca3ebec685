#include "apps/tessarine/effect/ParameterTable.h"

#include <fmt/format.h>

#include "dsp/component/ParameterAccess.h"

namespace App {

namespace {

using DSP::ParamKind;

Parameter describe(DSP::Component *component, ParamKind kind, uint32_t i)
{
    Parameter p;
    p.kind = kind;
    p.component = component;
    p.index = i;
    const auto host = [&](OptionalIndex index) {
        if (index) p.hostIndex = static_cast<int32_t>(index.value);
    };
    switch (kind) {
    case ParamKind::real:
        p.name = component->floatParamName(i).c_str();
        p.unit = component->floatParamLabel(i).c_str();
        p.minimum = static_cast<double>(component->floatParamRange(i).minimum);
        p.maximum = static_cast<double>(component->floatParamRange(i).maximum);
        p.defaultValue = static_cast<double>(component->floatParamDefault(i));
        p.saved = DSP::ParameterAccess<float>::isSaved(*component, i);
        host(component->floatParamHostIndex(i));
        break;
    case ParamKind::boolean:
        p.name = component->boolParamName(i).c_str();
        p.unit = component->boolParamLabel(i).c_str();
        p.minimum = 0.0;
        p.maximum = 1.0;
        p.defaultValue = component->boolParamDefault(i) ? 1.0 : 0.0;
        p.saved = DSP::ParameterAccess<bool>::isSaved(*component, i);
        host(component->boolParamHostIndex(i));
        break;
    case ParamKind::integer:
        p.name = component->intParamName(i).c_str();
        p.unit = component->intParamLabel(i).c_str();
        p.minimum = component->intParamRange(i).minimum;
        p.maximum = component->intParamRange(i).maximum;
        p.defaultValue = component->intParamDefault(i);
        p.saved = DSP::ParameterAccess<uint32_t>::isSaved(*component, i);
        host(component->intParamHostIndex(i));
        break;
    }
    return p;
}

bool isSpectrumSetting(const DSP::Component *component, ParamKind kind, uint32_t i)
{
    switch (kind) {
    case ParamKind::real: return component->floatParamGroup(i) == DSP::ParamGroup::spectrum;
    case ParamKind::boolean: return component->boolParamGroup(i) == DSP::ParamGroup::spectrum;
    default: return component->intParamGroup(i) == DSP::ParamGroup::spectrum;
    }
}

/// Those of one component that hosts do not see, of the spectrum displays or of all else.
std::vector<Parameter> hiddenSettings(DSP::Component *component, bool ofSpectrum)
{
    std::vector<Parameter> settings;
    const std::pair<ParamKind, uint32_t> lists[] = {{ParamKind::real, component->numFloatParams()},
                                                    {ParamKind::boolean, component->numBoolParams()},
                                                    {ParamKind::integer, component->numIntParams()}};
    for (const auto &[kind, count] : lists) {
        for (uint32_t i = 0; i < count; ++i) {
            if (isSpectrumSetting(component, kind, i) != ofSpectrum) continue;
            Parameter p = describe(component, kind, i);
            if (!p.hostIndex) settings.push_back(std::move(p));
        }
    }
    return settings;
}

} // namespace

std::vector<Parameter> listParameters(const EffectHost &host)
{
    std::vector<Parameter> list;
    const auto &rows = static_cast<const VSTPlugin &>(host.plugin()).hostParameters();
    for (int32_t i = 0; i < host.parameterCount(); ++i) {
        const HostParam &row = rows[static_cast<size_t>(i)];
        Parameter p = describe(row.component, row.kind, row.index);
        p.name = host.parameterName(i);
        p.unit = host.parameterUnit(i);
        p.hostIndex = i;
        list.push_back(std::move(p));
    }
    for (DSP::Component *component : host.plugin().componentList()) {
        for (Parameter &p : hiddenSettings(component, false)) list.push_back(std::move(p));
    }
    return list;
}

std::vector<Parameter> listSpectrumSettings(const EffectHost &host)
{
    std::vector<Parameter> list;
    for (uint32_t band = 0; band < DSP::kBands; ++band) {
        for (Parameter &p : hiddenSettings(host.plugin().transformHandle().spectrum(band), true)) {
            p.name = fmt::format("Band {} {}", band + 1, p.name);
            list.push_back(std::move(p));
        }
    }
    return list;
}

void Parameter::set(EffectHost &host, double value) const
{
    if (hostIndex)
        return host.setParameter(*hostIndex, static_cast<float>((value - minimum) / (maximum - minimum)));
    switch (kind) {
    case ParamKind::real: return component->setFloatParamValue(index, static_cast<float>(value));
    case ParamKind::boolean: return component->setBoolParamValue(index, value >= 0.5);
    case ParamKind::integer: return component->setIntParamValue(index, static_cast<uint32_t>(value));
    }
}

std::string Parameter::display(const EffectHost &host) const
{
    if (hostIndex) return host.parameterDisplay(*hostIndex);
    switch (kind) {
    case ParamKind::real: return fmt::format("{:.2f}", component->floatParamValue(index));
    case ParamKind::boolean: return format(component->boolParamValue(index) ? 1.0 : 0.0);
    default: return format(component->intParamValue(index));
    }
}

std::string Parameter::format(double value) const
{
    if (kind == ParamKind::boolean) return value >= 0.5 ? "on" : "off";
    return fmt::format("{:g}", value);
}

std::string Parameter::range() const
{
    if (kind == ParamKind::boolean) return "off or on";
    return fmt::format("{:g} to {:g}{}{}", minimum, maximum, unit.empty() ? "" : " ", unit);
}

} // namespace App
