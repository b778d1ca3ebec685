#pragma once
#include "tests/driver/Choices.h"
#include "tests/driver/Studio.h"

/// Somebody at the editors: clicks, drags, wheel and keys at any place, and what the host does meanwhile.
class Person {
public:
    explicit Person(Studio &where) : studio(where) {}
    /// One act at an editor, while the host does in the middle of it what hosts do.
    void step(Random &random);
    /// One act at the editor of `i`; `meanwhile` comes between the moves of a drag.
    void use(uint32_t i, Random &random, const std::function<void()> &meanwhile);
    void use(uint32_t i, Random &random)
    {
        use(i, random, [] {});
    }

private:
    void meanwhile(uint32_t i, Random &random);
    void actInside(uint32_t i, Random &random);

    Studio &studio;
};
