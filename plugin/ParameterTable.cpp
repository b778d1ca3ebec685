#include "plugin/ParameterTable.h"

ParameterTable::ParameterTable(std::span<DSP::Component *const> components)
{
    for (DSP::Component *component : components)
        for (const DSP::ParamKind kind : DSP::kParamKinds)
            for (uint32_t i = 0; i < component->numParams(kind); ++i) {
                DSP::ParamRecord &record = component->param(kind, i);
                if (record.automatable) record.hostIndex = static_cast<uint32_t>(visible.size());
                (record.automatable ? visible : hidden).push_back({component, kind, i});
            }
}
