#include "tests/reference/Chain.h"

#include <cmath>

namespace Reference {

/// Adds the denormal guard to both channels and returns the next phase.
static uint8_t addGuard(Audio &audio, uint8_t phase)
{
    for (uint32_t i = 0; i < audio.frames(); ++i) {
        audio.left[i] += guardSign(phase) * 1e-10f;
        if (audio.stereo()) audio.right[i] += guardSign(phase) * 2e-10f;
        ++phase;
    }
    return phase;
}

void Chain::set(const Settings &next)
{
    const bool bypassComesOn = next.bypass && !settings.bypass;
    settings = next;
    for (int i = 0; i < 3; ++i) crossOver.setCutoff(i, next.cutoffs[i]);
    for (int b = 0; b < 4; ++b) {
        dynamics.set(b, next.bands[b]);
        spectra[b].set(next.spectra[b]);
    }
    maximizer.set(next.maximizer);
    if (bypassComesOn) reset();
}

void Chain::reset()
{
    inputGuardPhase = splitGuardPhase = sumGuardPhase = 0;
    level.reset();
    crossOver.reset();
    maximizer.reset();
    dynamics.reset();
    for (Spectrum &spectrum : spectra) spectrum.reset();
}

void Chain::resume(uint32_t hz)
{
    sampleRate = hz;
    reset();
    crossOver.setSampleRate(hz);
    maximizer.setSampleRate(hz);
    dynamics.setSampleRate(hz);
    for (Spectrum &spectrum : spectra) spectrum.setSampleRate(hz);
}

Audio Chain::process(Audio audio)
{
    if (audio.frames() == 0 || settings.bypass) return audio;
    const bool stereo = audio.stereo();
    for (auto *channel : {&audio.left, &audio.right})
        for (float &sample : *channel)
            if (!(std::fabs(sample) <= 1e10f)) sample = 0;

    if (stereo && settings.processAsMono != monoActive) {
        monoActive = settings.processAsMono;
        resume(sampleRate);
    }
    if (stereo && monoActive) {
        for (uint32_t i = 0; i < audio.frames(); ++i) audio.left[i] = (audio.left[i] + audio.right[i]) * 0.5f;
        audio.right.clear();
    }
    run(audio);
    if (stereo && monoActive) audio.right = audio.left;
    return audio;
}

void Chain::run(Audio &audio)
{
    const uint32_t frames = audio.frames();
    inputGuardPhase = addGuard(audio, inputGuardPhase);
    splitGuardPhase = addGuard(audio, splitGuardPhase);

    Audio bands[4];
    float *left[4], *right[4];
    for (int b = 0; b < 4; ++b) {
        bands[b] = audio;
        left[b] = bands[b].left.data();
        right[b] = bands[b].rightOrNull();
    }
    crossOver.process(frames, audio.left.data(), audio.rightOrNull(), left, right);

    for (int b = 0; b < 4; ++b) {
        const bool onInput = settings.spectra[0].onInput;
        if (onInput) spectra[b].feed(frames, left[b], right[b]);
        if (!settings.bandBypass[b]) dynamics.process(b, frames, left[b], right[b]);
        if (!onInput) spectra[b].feed(frames, left[b], right[b]);
    }

    bool written = false;
    for (int b = 0; b < 4; ++b) {
        if (settings.bandMute[b]) continue;
        for (uint32_t i = 0; i < frames; ++i) {
            audio.left[i] = written ? audio.left[i] + bands[b].left[i] : bands[b].left[i];
            if (audio.stereo())
                audio.right[i] = written ? audio.right[i] + bands[b].right[i] : bands[b].right[i];
        }
        written = true;
    }
    if (!written) {
        for (auto *channel : {&audio.left, &audio.right}) channel->assign(channel->size(), 0.0f);
        sumGuardPhase = addGuard(audio, sumGuardPhase);
    }

    maximizer.process(frames, audio.left.data(), audio.rightOrNull());
    const float gain = linear(settings.gainDb);
    for (auto *channel : {&audio.left, &audio.right})
        for (float &sample : *channel) sample *= gain;
    level.measure(frames, audio.left.data(), audio.rightOrNull());
}

} // namespace Reference
