#include "tests/realtime/PlayedEffect.h"

#include <algorithm>
#include <array>

#include "host/VSTEditor.h"

using Signals::Random;

namespace {

std::atomic<int32_t> connected = 2; // channels of each side; the host has one effect

Point anywhere(Random &random)
{
    return {static_cast<int32_t>(random.below(VSTEditor::kWidth)),
            static_cast<int32_t>(random.below(VSTEditor::kHeight))};
}

const TransformHandle &chainOf(AEffect *effect) { return VSTPlugin::of(effect)->transformHandle(); }
VSTEditor &editorOf(AEffect *effect) { return static_cast<VSTEditor &>(*VSTPlugin::of(effect)->getEditor()); }

} // namespace

PlayedEffect::PlayedEffect()
{
    Platform::useWindowSystem(&system);
    window = system.makeHostWindow(VSTEditor::kWidth, VSTEditor::kHeight);
    effect = VSTPluginMain(callback);
    dispatch(effOpen);
    dispatch(effEditOpen, 0, 0, window);
    VSTPlugin::of(effect)->setEditorWindow(this);
}

PlayedEffect::~PlayedEffect()
{
    dispatch(effEditClose);
    dispatch(effClose);
    system.destroyWindow(window);
    Platform::useWindowSystem(nullptr);
}

intptr_t PlayedEffect::callback(AEffect *, int32_t opcode, int32_t index, intptr_t, void *, float)
{
    if (opcode == audioMasterVersion) return 2300;
    return opcode == audioMasterPinConnected && index >= connected ? 1 : 0;
}

void PlayedEffect::restart(Format format)
{
    connected = format.channels;
    options().setBypass(false);
    options().envelopeHandler().setEnvelope(DSP::ParamKind::boolean, DSP::Global::kBypassParam, {});
    dispatch(effMainsChanged, 0, 0);
    dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(format.rate));
    dispatch(effSetBlockSize, 0, kMostFrames);
    dispatch(effMainsChanged, 0, 1);
    tick();
}

void PlayedEffect::useWindow(Random &random)
{
    options().setBypass(false); // it would leave little to watch if it stayed
    switch (random.below(12)) {
    case 0:
    case 1: changeOption(random); break;
    case 2: setEnvelopes(random); break;
    case 3: useState(random); break;
    case 4: // a pause of the transport
        dispatch(effMainsChanged, 0, 0);
        dispatch(effMainsChanged, 0, 1);
        break;
    default: usePerson(random);
    }
    tick();
}

DSP::Global &PlayedEffect::options() const { return *chainOf(effect).global(); }

void PlayedEffect::usePerson(Random &random)
{
    system.movePointer(anywhere(random));
    switch (random.below(8)) {
    case 0: return system.doubleClick();
    case 1: return system.turnWheel(random.chance(0.5) ? 120 : -120);
    case 2:
        return system.typeKey(
            random.pick(std::array{Platform::kKeyTab, Platform::kKeyUp, Platform::kKeyPageDown,
                                   Platform::kKeyHome, Platform::kKeySpace}));
    default:
        system.pressButton();
        system.movePointer(anywhere(random));
        system.releaseButton();
    }
}

void PlayedEffect::changeOption(Random &random)
{
    const bool on = random.chance(0.5);
    ++settings;
    switch (random.below(9)) {
    case 0: return options().setBypass(true);
    case 1: return options().setProcessAsMono(on);
    case 2: return options().setMeterEnable(on);
    case 3: return options().setDelayCompensation(on);
    case 4: return options().setPresetChangeMode(random.below(3));
    case 5: return options().setAutomationZipperSamples(random.real(10, 600));
    case 6: return options().setRenderingThread(on);
    case 7: return options().setFps(random.real(5, 60));
    default: return chainOf(effect).spectrum(0)->setOnInput(on);
    }
}

/// Automation that is known ahead, of some parameters of all components, each within a block; or none.
void PlayedEffect::setEnvelopes(Random &random)
{
    const bool on = random.chance(0.5);
    const auto set = [&](DSP::Component &component, DSP::ParamKind kind, uint32_t i, float from, float to,
                         double probability) {
        constexpr uint32_t kLongest = 400000; // 40 ms
        DSP::Envelope envelope;
        if (on && random.chance(probability))
            envelope.push_back({0, 1 + random.below(kLongest), from, to, 0, 0});
        component.envelopeHandler().setEnvelope(kind, i, std::move(envelope));
    };
    for (DSP::Component *const component : VSTPlugin::of(effect)->componentList()) {
        for (uint32_t i = 0; i < component->numFloatParams(); ++i) {
            const auto [low, high] = component->floatParamRange(i);
            set(*component, DSP::ParamKind::real, i, random.real(low, high), random.real(low, high), 0.3);
        }
        for (uint32_t i = 0; i < component->numBoolParams(); ++i) {
            const float from = random.chance(0.5) ? 1.0f : 0.0f;
            set(*component, DSP::ParamKind::boolean, i, from, 1 - from, 0.05);
        }
        component->envelopeHandler().setEnabled(on);
    }
    ++settings;
}

void PlayedEffect::useState(Random &random)
{
    ++settings;
    if (random.chance(0.3)) {
        dispatch(effSetProgram, 0, 0);
    } else if (kept.empty() || random.chance(0.3)) {
        void *data = nullptr;
        const intptr_t size = dispatch(effGetChunk, 0, 0, &data);
        kept.assign(static_cast<uint8_t *>(data), static_cast<uint8_t *>(data) + size);
    } else {
        dispatch(effSetChunk, 0, static_cast<intptr_t>(kept.size()), kept.data());
    }
}

void PlayedEffect::automate(Random &random)
{
    const auto move = [&](int32_t index) { effect->setParameter(effect, index, random.real(0, 1)); };
    if (!random.chance(0.1))
        return move(static_cast<int32_t>(random.below(static_cast<uint32_t>(effect->numParams))));
    for (int32_t i = 0; i < effect->numParams; ++i) move(i);
    ++settings;
}

void PlayedEffect::tick()
{
    const uint32_t codes = waiting.exchange(0);
    for (uint32_t code = 0; code < 32; ++code)
        if (codes & 1u << code) editorOf(effect).post(code);
    system.advance(33);
    system.paints.clear();
}
