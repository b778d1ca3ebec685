#include "dsp/component/Automation.h"

#include "dsp/component/Component.h"

namespace DSP {

namespace {
/// Returns true if a value changed.
template <class V>
bool setValues(Component &component, int64_t sample, uint32_t rate)
{
    constexpr ParamKind kind = kKindOf<V>;
    bool moved = false;
    for (uint32_t i = 0; i < component.numParams(kind); ++i) {
        const ParamRecord &record = component.param(kind, i);
        if (!record.automatable || record.editing) continue;
        const std::optional<V> value = component.envelopeHandler().valueAt<V>(i, sample, rate);
        if (value && component.setParamValue(kind, i, *value)) moved = true;
    }
    return moved;
}
} // namespace

bool runAutomated(Component &component, const Now &now, const Block &block)
{
    const int64_t first = EnvelopeHandler::sampleAt(now.time, now.rate);
    bool moved = false;
    for (uint32_t done = 0; done < block.frames;) {
        const uint32_t count = std::min(std::max(now.step, 1u), block.frames - done);
        moved |= setValues<float>(component, first + done, now.rate);
        moved |= setValues<bool>(component, first + done, now.rate);
        moved |= setValues<uint32_t>(component, first + done, now.rate);
        component.process(block.part(done, count));
        done += count;
    }
    return moved;
}

} // namespace DSP
