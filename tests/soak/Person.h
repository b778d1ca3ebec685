#pragma once
#include "tests/soak/Studio.h"

/// Somebody at the editors: clicks, drags, wheel and keys at any place, and what the host does meanwhile.
class Person {
public:
    Person(Studio &where, uint64_t seed);
    void step();

private:
    Point anywhere(uint32_t i);
    void click(uint32_t i);
    void drag(uint32_t i);
    void turnWheel(uint32_t i);
    void press(uint32_t i);
    void pressAtHost(uint32_t i);
    void meanwhile(uint32_t i);
    std::function<void()> hostAct(uint32_t i);

    Studio &studio;
    Signals::Random random;
};
