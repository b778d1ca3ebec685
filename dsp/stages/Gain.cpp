#include "dsp/stages/Gain.h"

#include <algorithm>

#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Conversions.h"

namespace DSP {

namespace {
constexpr FloatRange kGainRangeDb = {-18.0f, 18.0f};
}

Gain::Gain(PluginLink &pluginLink) : ComponentImpl(pluginLink, "Gain")
{
    addFloat(ParamGroup::gain, "Gain", "dB", kGainRangeDb, 0, {.plain = &Gain::gain},
             {.plain = &Gain::setGain})
        .automatable = true;
    owner = this;
    finishConstruction();
}

void Gain::process(const Block &block)
{
    const float factor = gainLinear;
    scaleSamples(factor, block.left, block.frames);
    if (block.right) scaleSamples(factor, block.right, block.frames);
}

bool Gain::setGain(float db)
{
    const Util::Hold setting(settingLock);
    if (!gainDb.change(std::clamp(db, kGainRangeDb.minimum, kGainRangeDb.maximum))) return false;
    gainLinear = gainFactor(gainDb);
    return true;
}

} // namespace DSP
