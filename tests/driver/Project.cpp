#include "tests/driver/Project.h"

#include <array>

#include "tests/driver/AnyCall.h"

using Bytes = DrivenEffect::Bytes;
using Still = DrivenEffect::Still;

Project::Project(Studio &where, bool replays)
    : studio(where),
      person(where),
      withoutThreads(replays),
      damage(where.effect(0)),
      kept{where.effect(0).chunk()}
{
}

void Project::step(Random random)
{
    static constexpr struct {
        uint32_t share;
        const char *what;
        void (Project::*act)(DrivenEffect &effect, Random &random);
    } kActs[] = {{44, "let the person act", &Project::letPersonAct},
                 {10, "let time pass", &Project::letTimePass},
                 {6, "open", &Project::open},
                 {4, "close", &Project::close},
                 {2, "host's window goes", &Project::destroyWindow},
                 {3, "save", &Project::keepChunk},
                 {3, "load", &Project::loadKept},
                 {6, "load a damaged chunk", &Project::loadDamaged},
                 {4, "program", &Project::useProgram},
                 {2, "rate", &Project::changeRate},
                 {2, "channels", &Project::changeChannels},
                 {2, "pause or resume", &Project::pauseOrResume},
                 {4, "option", &Project::change},
                 {4, "envelope", &Project::setEnvelope},
                 {3, "any call", &Project::call},
                 {1, "unload", &Project::unload}};
    Journal::steps.add();
    DrivenEffect &effect = studio.effect(random.below(studio.size()));
    if (!effect.record()) {
        const Still still(effect.playing, effect.automating);
        return effect.load();
    }
    const auto *act = kActs;
    for (uint32_t place = random.below(100); place >= act->share; ++act) place -= act->share;
    Journal::note(act->what, effect.number);
    (this->*act->act)(effect, random);
    if (!random.chance(0.02)) return;
    studio.system.advance(200);
    studio.requireRest();
}

void Project::keepChunk(DrivenEffect &effect, Random &random)
{
    const uint32_t place = random.below(32);
    if (place >= kept.size()) return kept.push_back(effect.chunk());
    kept[place] = effect.chunk();
}

void Project::loadKept(DrivenEffect &effect, Random &random)
{
    effect.require(effect.setChunk(random.pick(kept), random.chance(0.5)),
                   "the effect takes what an effect saved");
}

void Project::loadDamaged(DrivenEffect &effect, Random &random)
{
    Bytes chunk = random.pick(kept);
    for (uint32_t changes = 1 + random.below(4); changes > 0; --changes) damage.change(chunk, random);
    const Still still(effect.playing, effect.automating);
    effect.offer(chunk, random.chance(0.5));
}

void Project::useProgram(DrivenEffect &effect, Random &random)
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

void Project::changeRate(DrivenEffect &effect, Random &random)
{
    const float rate =
        random.pick(std::array{1000.0f, 8000.0f, 11025.0f, 22050.0f, 44100.0f, 44100.0f, 44100.4f, 48000.0f,
                               88200.0f, 96000.0f, 192000.0f, 384000.0f, 0.0f, -1.0f});
    const bool pauses = random.chance(0.5);
    const Still still(effect.playing, effect.automating);
    if (pauses) effect.switchTo(false);
    effect.dispatch(effSetSampleRate, 0, 0, nullptr, rate);
    effect.dispatch(effSetBlockSize, 0, random.below(8192));
    if (pauses) effect.switchTo(true);
}

void Project::changeChannels(DrivenEffect &effect, Random &random)
{
    const Still still(effect.playing, effect.automating);
    effect.inputs = static_cast<int32_t>(random.below(3));
    effect.outputs = random.chance(0.1) ? 2 - effect.inputs : effect.inputs.load();
    effect.switchTo(false);
    effect.switchTo(true);
}

void Project::change(DrivenEffect &effect, Random &random)
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

void Project::setEnvelope(DrivenEffect &effect, Random &random)
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

void Project::call(DrivenEffect &effect, Random &random)
{
    const Still still(effect.playing, effect.automating);
    callAnything(effect, random);
}

void Project::unload(DrivenEffect &effect, Random &random)
{
    if (random.chance(0.5)) studio.close(effect.number); // else the editor closes with it
    const Still still(effect.playing, effect.automating);
    effect.unload();
}
