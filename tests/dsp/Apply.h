#pragma once
#include "dsp/stages/Dynamics.h"
#include "dsp/stages/Maximizer.h"
#include "tests/reference/Settings.h"

inline void apply(DSP::Dynamics &dynamics, uint32_t band, const Reference::BandSettings &settings)
{
    dynamics.setThreshold(band, settings.thresholdDb);
    dynamics.setGain(band, settings.gainDb);
    dynamics.setRatio(band, settings.ratio);
    dynamics.setAttack(band, settings.attackMs);
    dynamics.setRelease(band, settings.releaseMs);
    dynamics.setBypass(band, settings.bypass);
    dynamics.setSolo(band, settings.solo);
}

inline void apply(DSP::Maximizer &maximizer, const Reference::MaximizerSettings &settings)
{
    maximizer.setThreshold(settings.thresholdDb);
    maximizer.setMargin(settings.marginDb);
    maximizer.setAttack(settings.attackMs);
    maximizer.setRelease(settings.releaseMs);
    maximizer.setBypass(settings.bypass);
    maximizer.setBrickwall(settings.brickwall);
}
