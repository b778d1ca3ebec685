#pragma once
#include "tests/soak/Person.h"

/// The window thread: a host that loads and saves states, changes its settings, opens and closes editors, and
/// the person in front of them.
class Project {
public:
    /// `replays`: without threads of the editors, which would not come in the same order again.
    Project(Studio &where, uint64_t seed, bool replays);
    void step();

private:
    void useEditor(uint32_t i);
    void useChunk(uint32_t i);
    void keepChunk(uint32_t i);
    void loadKept(uint32_t i);
    void loadDamaged(uint32_t i);
    SoakedEffect::Bytes damaged();
    void useProgram(uint32_t i);
    void changeSettings(uint32_t i);
    void changeRate(uint32_t i);
    void changeChannels(uint32_t i);
    void changeOptions(uint32_t i);
    void setEnvelope(uint32_t i);
    void loadAnew(uint32_t i);
    void rest();

    Studio &studio;
    Signals::Random random;
    Person person;
    const bool withoutThreads;
    std::vector<SoakedEffect::Bytes> kept;
};
