#include "tests/simulation/HostActions.h"

#include <array>

#include "tests/simulation/AnyCall.h"

using Bytes = EffectInstance::Bytes;
using Exclusive = EffectInstance::Exclusive;

HostActions::HostActions(SimulatedHost &simulated, bool replays)
    : host(simulated),
      user(simulated),
      withoutThreads(replays),
      damage(simulated.effect(0)),
      saved{simulated.effect(0).chunk()}
{
}

void HostActions::step(Random random)
{
    static constexpr struct {
        uint32_t share;
        const char *what;
        void (HostActions::*act)(EffectInstance &effect, Random &random);
    } kActs[] = {{44, "user action", &HostActions::letUserAct},
                 {10, "let time pass", &HostActions::letTimePass},
                 {6, "open", &HostActions::open},
                 {4, "close", &HostActions::close},
                 {2, "destroy the host's window", &HostActions::destroyWindow},
                 {3, "save a chunk", &HostActions::saveChunk},
                 {3, "load a chunk", &HostActions::loadSaved},
                 {6, "load a damaged chunk", &HostActions::loadDamaged},
                 {4, "program", &HostActions::useProgram},
                 {2, "rate", &HostActions::changeRate},
                 {2, "channels", &HostActions::changeChannels},
                 {2, "pause or resume", &HostActions::pauseOrResume},
                 {4, "option", &HostActions::changeOptions},
                 {4, "envelope", &HostActions::setEnvelope},
                 {3, "any call", &HostActions::call},
                 {1, "unload", &HostActions::unload}};
    Journal::steps.add();
    EffectInstance &effect = host.effect(random.below(host.size()));
    if (!effect.record()) {
        const Exclusive exclusive(effect.playing, effect.automating);
        return effect.load();
    }
    const auto *act = kActs;
    for (uint32_t left = random.below(100); left >= act->share; ++act) left -= act->share;
    Journal::note(act->what, effect.number);
    (this->*act->act)(effect, random);
    if (!random.chance(0.02)) return;
    host.system.advance(200);
    host.requireIdle();
}

void HostActions::saveChunk(EffectInstance &effect, Random &random)
{
    const uint32_t slot = random.below(32);
    if (slot >= saved.size()) return saved.push_back(effect.chunk());
    saved[slot] = effect.chunk();
}

void HostActions::loadSaved(EffectInstance &effect, Random &random)
{
    effect.require(effect.setChunk(random.pick(saved), random.chance(0.5)), "the effect loads a saved chunk");
}

void HostActions::loadDamaged(EffectInstance &effect, Random &random)
{
    Bytes chunk = random.pick(saved);
    for (uint32_t changes = 1 + random.below(4); changes > 0; --changes) damage.change(chunk, random);
    const Exclusive exclusive(effect.playing, effect.automating);
    effect.checkChunk(chunk, random.chance(0.5));
}

void HostActions::useProgram(EffectInstance &effect, Random &random)
{
    std::string name(random.below(60), 'n');
    name.resize(256);
    switch (random.below(4)) {
    case 0: effect.dispatch(effSetProgram, 0, 0); break;
    case 1: effect.dispatch(effSetProgramName, 0, 0, name.data()); break;
    case 2: effect.dispatch(effGetProgramName, 0, 0, name.data()); break;
    default: effect.dispatch(effCopyProgram, 0); break;
    }
}

void HostActions::changeRate(EffectInstance &effect, Random &random)
{
    const float rate =
        random.pick(std::array{1000.0f, 8000.0f, 11025.0f, 22050.0f, 44100.0f, 44100.0f, 44100.4f, 48000.0f,
                               88200.0f, 96000.0f, 192000.0f, 384000.0f, 0.0f, -1.0f});
    const bool pauses = random.chance(0.5);
    const Exclusive exclusive(effect.playing, effect.automating);
    if (pauses) effect.switchTo(false);
    effect.dispatch(effSetSampleRate, 0, 0, nullptr, rate);
    effect.dispatch(effSetBlockSize, 0, random.below(8192));
    if (pauses) effect.switchTo(true);
}

void HostActions::changeChannels(EffectInstance &effect, Random &random)
{
    const Exclusive exclusive(effect.playing, effect.automating);
    effect.inputs = static_cast<int32_t>(random.below(3));
    effect.outputs = random.chance(0.1) ? 2 - effect.inputs : effect.inputs.load();
    effect.switchTo(false);
    effect.switchTo(true);
}

void HostActions::changeOptions(EffectInstance &effect, Random &random)
{
    effect.echoes = random.chance(0.5);
    changeOption(effect.plugin(), random, withoutThreads);
}

void changeOption(VSTPlugin &plugin, Random &random, bool withoutThreads)
{
    DSP::Global &options = *plugin.transformHandle().global();
    const bool on = random.chance(0.5);
    switch (random.below(11)) {
    case 0: options.setDelayCompensation(on); return;
    case 1: options.setProcessAsMono(on); return;
    case 2: options.setBypass(on); return;
    case 3: options.setMeterEnable(on); return;
    case 4: options.setAnimationEnable(on); return;
    case 5: options.setShowBackgroundGrid(on); return;
    case 6: options.setPresetChangeMode(random.below(3)); return;
    case 7: options.setFps(random.real(5, 80)); return;
    case 8: options.setAutomationZipperSamples(random.real(1, 600)); return;
    case 9: plugin.transformHandle().spectrum(0)->setOnInput(on); return;
    default:
        if (!withoutThreads) options.setRenderingThread(on);
    }
}

void HostActions::setEnvelope(EffectInstance &effect, Random &random)
{
    constexpr int64_t kSecond = 10000000;
    DSP::Envelope envelope;
    for (uint32_t segments = random.below(5); segments > 0; --segments) {
        const int64_t start = random.below(20) * kSecond / 4, end = start + random.below(8) * kSecond / 8;
        envelope.push_back(
            {start, end, random.real(-100, 100), random.real(-20000, 20000), 0, random.below(9)});
    }
    const auto kind = static_cast<DSP::ParamKind>(random.below(3));
    DSP::Component &component = *random.pick(effect.plugin().componentList());
    const uint32_t size = component.numParams(kind);
    if (size > 0) component.envelopeHandler().setEnvelope(kind, random.below(size), std::move(envelope));
    component.envelopeHandler().setEnabled(random.chance(0.5));
}

void HostActions::call(EffectInstance &effect, Random &random)
{
    const Exclusive exclusive(effect.playing, effect.automating);
    callAnything(effect, random);
}

void HostActions::unload(EffectInstance &effect, Random &random)
{
    if (random.chance(0.5)) host.close(effect.number); // otherwise unload() closes the editor
    const Exclusive exclusive(effect.playing, effect.automating);
    effect.unload();
}
