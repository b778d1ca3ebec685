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

inline void apply(DSP::Maximizer &limiter, const Reference::LimiterSettings &settings)
{
    limiter.setThreshold(settings.thresholdDb);
    limiter.setMargin(settings.marginDb);
    limiter.setAttack(settings.attackMs);
    limiter.setRelease(settings.releaseMs);
    limiter.setBypass(settings.bypass);
    limiter.setBrickwall(settings.brickwall);
}
