#include "tests/realtime/PlayedEffect.h"

#include "host/VSTEditor.h"
#include "tests/simulation/HostActions.h"

PlayedEffect::PlayedEffect()
{
    host.open(0);
    effect.plugin().setEditorWindow(this);
}

void PlayedEffect::restart(Format format)
{
    effect.inputs = effect.outputs = format.channels;
    options().setBypass(false);
    options().envelopeHandler().setEnvelope(DSP::ParamKind::boolean, DSP::Global::kBypassParam, {});
    effect.switchTo(false);
    effect.dispatch(effSetBlockSize, 0, kMostFrames);
    effect.switchTo(true);
    effect.dispatch(effSetSampleRate, 0, 0, nullptr,
                    static_cast<float>(format.rate)); // some hosts do so while on
    tick();
}

void PlayedEffect::useWindow(Random &random)
{
    options().setBypass(false); // a bypassed chain would leave little to check
    switch (random.below(12)) {
    case 0:
    case 1: changeOption(effect.plugin(), random, false); break;
    case 2: setEnvelopes(random); break;
    case 3: useState(random); break;
    case 4: // suspend and resume
        effect.switchTo(false);
        effect.switchTo(true);
        break;
    default: user.use(0, random);
    }
    tick();
}

/// Sets an envelope for some parameters of all components, or disables all envelopes.
void PlayedEffect::setEnvelopes(Random &random)
{
    const bool on = random.chance(0.5);
    constexpr uint32_t kLongest = 400000; // 40 ms
    for (DSP::Component *const component : effect.plugin().componentList()) {
        for (const auto &[kind, probability] :
             {std::pair(DSP::ParamKind::real, 0.3), {DSP::ParamKind::boolean, 0.05}})
            for (uint32_t i = 0; i < component->numParams(kind); ++i) {
                const auto &[low, high] = component->param(kind, i).range;
                const auto any = [&] { return random.real(DSP::toNumber(low), DSP::toNumber(high)); };
                DSP::Envelope envelope;
                if (on && random.chance(probability))
                    envelope.push_back({0, 1 + random.below(kLongest), any(), any(), 0, 0});
                component->envelopeHandler().setEnvelope(kind, i, std::move(envelope));
            }
        component->envelopeHandler().setEnabled(on);
    }
}

void PlayedEffect::useState(Random &random)
{
    if (random.chance(0.3))
        effect.dispatch(effSetProgram, 0, 0);
    else if (saved.empty() || random.chance(0.3))
        saved = effect.chunk();
    else
        effect.setChunk(saved, false);
}

void PlayedEffect::automate(Random &random)
{
    const auto move = [&](int32_t index) { record()->setParameter(record(), index, random.real(0, 1)); };
    if (random.chance(0.9))
        return move(static_cast<int32_t>(random.below(static_cast<uint32_t>(record()->numParams))));
    for (int32_t i = 0; i < record()->numParams; ++i) move(i);
}

void PlayedEffect::tick()
{
    auto &editor = static_cast<VSTEditor &>(*effect.plugin().getEditor());
    for (uint32_t codes = waiting.exchange(0), code = 0; code < 32; ++code)
        if (codes & 1u << code) editor.post(code);
    host.system.advance(33);
    host.system.paints.clear();
}
