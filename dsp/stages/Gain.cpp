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

uint32_t Gain::process(uint32_t frames, float *left, float *right)
{
    const float factor = gainLinear;
    ippsMulC_32f_I(factor, left, static_cast<int>(frames));
    if (right) ippsMulC_32f_I(factor, right, static_cast<int>(frames));
    return frames;
}

void Gain::setGain(float db)
{
    const Util::Hold setting(settingLock);
    if (db == gainDb) return;
    gainDb = std::clamp(db, kGainRangeDb.minimum, kGainRangeDb.maximum);
    gainLinear = gainFactor(gainDb);
}

} // namespace DSP
