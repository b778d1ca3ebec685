#include "apps/tessarine/effect/ParameterTable.h"

#include <fmt/format.h>

namespace App {

namespace {

Parameter describe(const DSP::ParameterAddress &address)
{
    const DSP::ParamRecord &record = address.record();
    Parameter p;
    p.name = record.name.c_str();
    p.unit = record.label.c_str();
    p.kind = address.kind;
    p.address = address;
    if (record.hostIndex) p.hostIndex = static_cast<int32_t>(record.hostIndex.value);
    p.saved = record.isSaved();
    p.minimum = DSP::toNumber(record.range.minimum);
    p.maximum = DSP::toNumber(record.range.maximum);
    p.defaultValue = DSP::toNumber(record.defaultValue);
    return p;
}

bool isSpectrumSetting(const DSP::ParameterAddress &address)
{
    return address.record().group == DSP::ParamGroup::spectrum;
}

} // namespace

std::vector<Parameter> listParameters(const EffectHost &host)
{
    const ParameterTable &table = host.plugin().parameters();
    std::vector<Parameter> list;
    for (const DSP::ParameterAddress &row : table.hostRows()) {
        Parameter p = describe(row);
        p.name = host.parameterName(*p.hostIndex);
        p.unit = host.parameterUnit(*p.hostIndex);
        list.push_back(std::move(p));
    }
    for (const DSP::ParameterAddress &row : table.hiddenRows()) {
        if (!isSpectrumSetting(row)) list.push_back(describe(row));
    }
    return list;
}

std::vector<Parameter> listSpectrumSettings(const EffectHost &host)
{
    std::vector<Parameter> list;
    for (const DSP::ParameterAddress &row : host.plugin().parameters().hiddenRows()) {
        if (!isSpectrumSetting(row)) continue;
        uint32_t band = 0;
        while (host.plugin().transformHandle().spectrum(band) != row.component) ++band;
        list.push_back(describe(row));
        list.back().name = fmt::format("Band {} {}", band + 1, list.back().name);
    }
    return list;
}

void Parameter::set(EffectHost &host, double value) const
{
    if (hostIndex)
        return host.setParameter(*hostIndex, static_cast<float>((value - minimum) / (maximum - minimum)));
    address.set(DSP::fromNumber(kind, value));
}

std::string Parameter::display(const EffectHost &host) const
{
    if (hostIndex) return host.parameterDisplay(*hostIndex);
    const double value = DSP::toNumber(address.value());
    return kind == DSP::ParamKind::real ? fmt::format("{:.2f}", value) : format(value);
}

std::string Parameter::format(double value) const
{
    if (kind == DSP::ParamKind::boolean) return value >= 0.5 ? "on" : "off";
    return fmt::format("{:g}", value);
}

std::string Parameter::range() const
{
    if (kind == DSP::ParamKind::boolean) return "off or on";
    return fmt::format("{} from {:g} to {:g}{}{}",
                       kind == DSP::ParamKind::integer ? "a whole number" : "a value", minimum, maximum,
                       unit.empty() ? "" : " ", unit);
}

} // namespace App
