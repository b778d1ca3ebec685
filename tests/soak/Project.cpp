#include "tests/soak/Project.h"

#include <array>
#include <cstring>

#include "dsp/ParameterAccess.h"
#include "tests/soak/Journal.h"

using Journal::counts;
using Journal::note;
using Journal::require;
using Bytes = SoakedEffect::Bytes;

Project::Project(Studio &where, uint64_t seed, bool replays)
    : studio(where), random(seed), person(where, seed + 1), withoutThreads(replays)
{
    kept.push_back(studio.effect(0).chunk());
}

void Project::step()
{
    ++counts.windowSteps;
    const uint32_t i = random.below(studio.size()), what = random.below(100);
    if (what < 50)
        person.step();
    else if (what < 60)
        useEditor(i);
    else if (what < 72)
        useChunk(i);
    else if (what < 76)
        useProgram(i);
    else if (what < 86)
        changeSettings(i);
    else if (what < 90)
        setEnvelope(i);
    else if (what < 91)
        loadAnew(i);
    else
        studio.system.advance(random.below(60));
    if (random.chance(0.02)) rest();
}

void Project::useEditor(uint32_t i)
{
    const uint32_t what = random.below(8);
    if (what < 4) {
        note("open", i);
        studio.open(i);
    } else if (what < 7) {
        note("close", i);
        studio.close(i);
    } else {
        note("host's window goes", i);
        studio.destroyWindow(i);
    }
}

void Project::useChunk(uint32_t i)
{
    const uint32_t what = random.below(4);
    if (what == 0)
        keepChunk(i);
    else if (what == 1)
        loadKept(i);
    else
        loadDamaged(i);
}

void Project::keepChunk(uint32_t i)
{
    const uint32_t place = random.below(32);
    if (!studio.effect(i).record()) return;
    note("save", i);
    Bytes chunk = studio.effect(i).chunk();
    if (place < kept.size())
        kept[place] = std::move(chunk);
    else
        kept.push_back(std::move(chunk));
}

void Project::loadKept(uint32_t i)
{
    // Not out of the list as it is, whose length depends on nothing but the choices, though its content does not.
    const Bytes chunk = random.pick(kept);
    const bool isPreset = random.chance(0.5);
    SoakedEffect &effect = studio.effect(i);
    if (!effect.record()) return;
    note("load", i);
    require(effect.setChunk(chunk, isPreset), "the effect takes what an effect saved", i);
    ++counts.chunksTaken;
}

void Project::loadDamaged(uint32_t i)
{
    const Bytes chunk = damaged();
    const bool isPreset = random.chance(0.5);
    SoakedEffect &effect = studio.effect(i);
    if (!effect.record()) return;
    note("load a damaged chunk", i);
    const SoakedEffect::Still still(effect.playing, effect.automating);
    const Bytes before = effect.chunk();
    if (effect.setChunk(chunk, isPreset)) {
        effect.requireFiniteParameters();
        const Bytes taken = effect.chunk();
        require(effect.setChunk(taken, isPreset) && effect.chunk() == taken,
                "what was taken can be saved and loaded", i);
        ++counts.chunksTaken;
    } else {
        require(effect.chunk() == before, "a refused chunk changes nothing", i);
        ++counts.chunksRefused;
    }
}

Bytes Project::damaged()
{
    Bytes chunk = random.pick(kept);
    for (uint32_t changes = 1 + random.below(4); changes > 0; --changes) {
        const uint32_t what = random.below(8), place = random.below(static_cast<uint32_t>(chunk.size()));
        const auto word = static_cast<uint32_t>(random.next());
        if (what == 0)
            chunk.resize(1 + place);
        else if (what == 1)
            chunk.resize(chunk.size() + place);
        else if (what < 5)
            std::memcpy(chunk.data() + place, &word, std::min(sizeof word, chunk.size() - place));
        else
            chunk[place] ^= static_cast<uint8_t>(1u << (word & 7));
    }
    return chunk;
}

void Project::useProgram(uint32_t i)
{
    const uint32_t what = random.below(4);
    const std::string name(random.below(60), 'n');
    SoakedEffect &effect = studio.effect(i);
    if (!effect.record()) return;
    note("program", i);
    std::vector<char> text(name.begin(), name.end());
    text.resize(256);
    switch (what) {
    case 0: effect.dispatch(effSetProgram, 0, 0); break;
    case 1: effect.dispatch(effSetProgramName, 0, 0, text.data()); break;
    case 2: effect.dispatch(effGetProgramName, 0, 0, text.data()); break;
    default: effect.dispatch(effCopyProgram, 0); break;
    }
}

void Project::changeSettings(uint32_t i)
{
    const uint32_t what = random.below(5);
    ++counts.settings;
    if (what == 0)
        changeRate(i);
    else if (what == 1)
        changeChannels(i);
    else if (what == 2) {
        const bool on = random.chance(0.6);
        if (!studio.effect(i).record()) return;
        note(on ? "resume" : "suspend", i);
        studio.effect(i).dispatch(effMainsChanged, 0, on);
        ++counts.pauses;
    } else
        changeOptions(i);
}

void Project::changeRate(uint32_t i)
{
    const float rate =
        random.pick(std::array{1000.0f, 8000.0f, 11025.0f, 22050.0f, 44100.0f, 44100.0f, 44100.4f, 48000.0f,
                               88200.0f, 96000.0f, 192000.0f, 384000.0f, 0.0f, -1.0f});
    const auto size = static_cast<intptr_t>(random.below(8192));
    const bool pauses = random.chance(0.5);
    SoakedEffect &effect = studio.effect(i);
    const SoakedEffect::Still still(effect.playing, effect.automating);
    if (!effect.record()) return;
    note("rate", i);
    if (pauses) effect.dispatch(effMainsChanged, 0, 0);
    effect.dispatch(effSetSampleRate, 0, 0, nullptr, rate);
    effect.dispatch(effSetBlockSize, 0, size);
    if (pauses) effect.dispatch(effMainsChanged, 0, 1);
}

void Project::changeChannels(uint32_t i)
{
    const auto ins = static_cast<int32_t>(random.below(3));
    const bool mixed = random.chance(0.1);
    SoakedEffect &effect = studio.effect(i);
    const SoakedEffect::Still still(effect.playing, effect.automating);
    effect.inputs = ins;
    effect.outputs = mixed ? 2 - ins : ins;
    if (!effect.record()) return;
    note("channels", i);
    effect.dispatch(effMainsChanged, 0, 0);
    effect.dispatch(effMainsChanged, 0, 1);
}

void Project::changeOptions(uint32_t i)
{
    const uint32_t what = random.below(10);
    const bool on = random.chance(0.5);
    const uint32_t choice = random.below(4);
    studio.effect(i).echoes = on;
    if (!studio.effect(i).record()) return;
    note("option", i);
    DSP::Global &options = *studio.effect(i).plugin().transformHandle().global();
    switch (what) {
    case 0: return options.setDelayCompensation(on);
    case 1: return options.setProcessAsMono(on);
    case 2: return options.setBypass(on);
    case 3: return options.setMeterEnable(on);
    case 4: return options.setAnimationEnable(on);
    case 5: return options.setShowBackgroundGrid(on);
    case 6: return options.setPresetChangeMode(choice % 3);
    case 7: return options.setFps(static_cast<float>(10 + 20 * choice));
    case 8: return options.setAutomationZipperSamples(static_cast<float>(1 + 100 * choice));
    default:
        if (!withoutThreads) options.setRenderingThread(on);
    }
}

void Project::setEnvelope(uint32_t i)
{
    constexpr int64_t kSecond = 10000000;
    const uint64_t which = random.next();
    const auto kind = static_cast<DSP::ParamKind>(random.below(3));
    const bool on = random.chance(0.5);
    DSP::Envelope envelope;
    for (uint32_t segments = random.below(5); segments > 0; --segments) {
        const int64_t start = random.below(20) * kSecond / 4, end = start + random.below(8) * kSecond / 8;
        envelope.push_back(
            {start, end, random.real(-100, 100), random.real(-20000, 20000), 0, random.below(9)});
    }
    if (!studio.effect(i).record()) return;
    note("envelope", i);
    const auto components = studio.effect(i).plugin().componentList();
    DSP::Component &component = *components[which % components.size()];
    const uint32_t size = kind == DSP::ParamKind::real      ? component.numFloatParams()
                          : kind == DSP::ParamKind::boolean ? component.numBoolParams()
                                                            : component.numIntParams();
    if (size > 0)
        component.envelopeHandler().setEnvelope(kind, static_cast<uint32_t>((which >> 32) % size),
                                                std::move(envelope));
    component.envelopeHandler().setEnabled(on);
    ++counts.envelopes;
}

void Project::loadAnew(uint32_t i)
{
    const bool leavesEditor = random.chance(0.5);
    if (!leavesEditor) studio.close(i);
    SoakedEffect &effect = studio.effect(i);
    const SoakedEffect::Still still(effect.playing, effect.automating);
    note("load anew", i);
    if (effect.record())
        effect.unload();
    else
        effect.load();
    ++counts.reloads;
}

/// Nobody touches anything for a while.
void Project::rest()
{
    studio.system.advance(200);
    studio.requireRest();
}
