#include "host/HostParameters.h"

#include <cmath>

#include "host/HostText.h"
#include "host/vst2.h"

namespace {

// The interface specifies 8 characters, but current hosts provide at least 24.
constexpr uint32_t kLongestName = 23, kLongestShortName = 15, kLongestDisplay = 23;
constexpr int32_t kDisplayDecimals = 2;

String valueText(const HostParam &param)
{
    const DSP::ParamRecord &record = param.record();
    const DSP::ParameterValue value = param.value();
    if (const float *const real = std::get_if<float>(&value)) {
        const bool atMinimum = DSP::toNumber(value) <= DSP::toNumber(record.range.minimum);
        return record.showsMinusInf && atMinimum ? "-Inf" : String::number(*real, kDisplayDecimals);
    }
    if (const bool *const on = std::get_if<bool>(&value)) {
        if (!record.hasValueNames()) return *on ? "True" : "False";
        return fitToLength(record.valueNames[*on], kLongestDisplay, '\n');
    }
    const uint32_t number = std::get<uint32_t>(value);
    return number < record.valueNames.size() ? record.valueNames[number] : String::number(number);
}

} // namespace

const HostParam *HostParameters::find(int32_t index) const
{
    const auto row = static_cast<uint32_t>(index); // a negative index becomes a huge row number
    return row < hostParams.size() ? &hostParams[row] : nullptr;
}

bool HostParameters::set(int32_t index, float share) const
{
    const HostParam *const param = find(index);
    if (!param || !std::isfinite(share)) return false;
    const DSP::ParameterValue value = param->record().fromShare(share);
    return std::isfinite(DSP::toNumber(value)) && param->set(value);
}

float HostParameters::get(int32_t index) const
{
    const HostParam *const param = find(index);
    return param ? static_cast<float>(param->record().toShare(param->value())) : 0.0f;
}

void HostParameters::writeLabel(int32_t index, char *label) const
{
    if (const HostParam *const param = find(index)) writeText(param->record().label, kLabelRoom - 1, label);
}

void HostParameters::writeDisplay(int32_t index, char *text) const
{
    if (const HostParam *const param = find(index)) writeText(valueText(*param), kLongestDisplay, text);
}

void HostParameters::writeName(int32_t index, char *text) const
{
    const HostParam *const param = find(index);
    if (!param) return;
    const uint32_t width = longNames ? kLongestName : kLongestShortName;
    const String name = fitToLength(param->record().name, width, '\n');
    writeText(name.isEmpty() ? String("?") : name, width, text);
}
