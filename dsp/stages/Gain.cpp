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

void Gain::setGain(float db)
{
    const Util::Hold setting(settingLock);
    if (db == gainDb) return;
    gainDb = std::clamp(db, kGainRangeDb.minimum, kGainRangeDb.maximum);
    gainLinear = gainFactor(gainDb);
}

} // namespace DSP
