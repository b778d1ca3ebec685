#pragma once
#include "tests/simulation/ChunkDamage.h"
#include "tests/simulation/SimulatedUser.h"

/// Random actions of the window thread: the host loads and saves states, changes settings, opens and closes editors;
/// the user operates them.
class HostActions {
public:
    /// If `replays`, the editors draw without threads, because thread order is not reproducible.
    HostActions(SimulatedHost &simulated, bool replays);
    /// Performs one action chosen by `random`.
    void step(Random random);

private:
    void open(EffectInstance &effect, Random &) { host.open(effect.number); }
    void close(EffectInstance &effect, Random &) { host.close(effect.number); }
    void destroyWindow(EffectInstance &effect, Random &) { host.destroyWindow(effect.number); }
    void letUserAct(EffectInstance &, Random &random) { user.step(random); }
    void letTimePass(EffectInstance &, Random &random) { host.system.advance(random.below(60)); }
    void unload(EffectInstance &effect, Random &random);
    void saveChunk(EffectInstance &effect, Random &random);
    void loadSaved(EffectInstance &effect, Random &random);
    void loadDamaged(EffectInstance &effect, Random &random);
    void useProgram(EffectInstance &effect, Random &random);
    void changeRate(EffectInstance &effect, Random &random);
    void changeChannels(EffectInstance &effect, Random &random);
    void pauseOrResume(EffectInstance &effect, Random &random) { effect.switchTo(random.chance(0.6)); }
    void changeOptions(EffectInstance &effect, Random &random);
    void setEnvelope(EffectInstance &effect, Random &random);
    void call(EffectInstance &effect, Random &random);

    SimulatedHost &host;
    SimulatedUser user;
    const bool withoutThreads;
    const ChunkDamage damage;
    std::vector<EffectInstance::Bytes> saved; // chunks
};

/// Sets a random option that hosts cannot automate.
void changeOption(VSTPlugin &plugin, Random &random, bool withoutThreads);
