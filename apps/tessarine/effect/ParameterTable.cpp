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

/// "Band 1 " for a parameter of the first band's spectrum.
std::string bandPrefix(const EffectHost &host, const DSP::ParameterAddress &address)
{
    uint32_t band = 0;
    while (host.plugin().transformHandle().spectrum(band) != address.component) ++band;
    return fmt::format("Band {} ", band + 1);
}

/// The other hidden parameters set the editor's window, its threads and its meters, or have no effect.
bool hiddenChangesAudio(const DSP::ParamRecord &record)
{
    return record.group == DSP::ParamGroup::crossover || record.name == "Global Bypass" ||
           record.name == "Global: Process As Mono";
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
        p.changesAudio = true;
        list.push_back(std::move(p));
    }
    for (const DSP::ParameterAddress &row : table.hiddenRows()) {
        Parameter p = describe(row);
        if (isSpectrumSetting(row)) p.name = bandPrefix(host, row) + p.name;
        p.changesAudio = hiddenChangesAudio(row.record());
        list.push_back(std::move(p));
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
