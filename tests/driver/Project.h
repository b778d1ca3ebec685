#pragma once
#include "tests/driver/ChunkDamage.h"
#include "tests/driver/Person.h"

/// The window thread: a host that loads and saves states, changes its settings, opens and closes editors, and
/// the person in front of them.
class Project {
public:
    /// `replays`: without threads of the editors, which would not come in the same order again.
    Project(Studio &where, bool replays);
    /// One act, which is all decided by the generator.
    void step(Random random);

private:
    void open(DrivenEffect &effect, Random &) { studio.open(effect.number); }
    void close(DrivenEffect &effect, Random &) { studio.close(effect.number); }
    void destroyWindow(DrivenEffect &effect, Random &) { studio.destroyWindow(effect.number); }
    void letPersonAct(DrivenEffect &, Random &random) { person.step(random); }
    void letTimePass(DrivenEffect &, Random &random) { studio.system.advance(random.below(60)); }
    void unload(DrivenEffect &effect, Random &random);
    void keepChunk(DrivenEffect &effect, Random &random);
    void loadKept(DrivenEffect &effect, Random &random);
    void loadDamaged(DrivenEffect &effect, Random &random);
    void useProgram(DrivenEffect &effect, Random &random);
    void changeRate(DrivenEffect &effect, Random &random);
    void changeChannels(DrivenEffect &effect, Random &random);
    void pauseOrResume(DrivenEffect &effect, Random &random) { effect.switchTo(random.chance(0.6)); }
    void change(DrivenEffect &effect, Random &random);
    void setEnvelope(DrivenEffect &effect, Random &random);
    void call(DrivenEffect &effect, Random &random);

    Studio &studio;
    Person person;
    const bool withoutThreads;
    const ChunkDamage damage;
    std::vector<DrivenEffect::Bytes> kept;
};

/// Sets one of the options that the effect has in its editor only.
void changeOption(VSTPlugin &plugin, Random &random, bool withoutThreads);
