#include "tests/driver/Person.h"

#include <array>
#include <string>

#include "host/VSTEditor.h"

using namespace Platform;
using Journal::note;

static constexpr std::array kKeys = {
    kKeyTab,  kKeySpace, kKeyReturn, kKeyBack,     kKeyEscape, kKeyF2,   kKeyPageUp,    kKeyEnd,
    kKeyHome, kKeyLeft,  kKeyUp,     kKeyPageDown, kKeyRight,  kKeyDown, uint32_t{'5'}, uint32_t{'-'}};

static const std::vector<uint32_t> kHeldKeys[] = {
    {}, {}, {kKeyShift}, {kKeyControl}, {kKeyAlt}, {kKeyAlt, kKeyShift}};

void Person::step(Random &random)
{
    const uint32_t i = studio.nextOpen(random.below(studio.size()));
    if (random.chance(0.4))
        studio.effect(i).insideEdits = [this, i, own = Random(random.next())]() mutable {
            actInside(i, own);
        };
    const std::string typed = random.pick(std::array{"3", "-12.5", "1e9", "", "nonsense", "20000", "-Inf"});
    const bool confirms = random.chance(0.7);
    const uint32_t promptAct = random.below(8);
    studio.system.onPrompt = [=, this](const PromptRequest &) {
        if (promptAct == 0) studio.close(i);
        if (promptAct == 1) studio.system.advance(40);
        return confirms ? std::optional(typed) : std::nullopt;
    };
    use(i, random, [&] {
        if (random.chance(0.15)) meanwhile(i, random);
    });
    studio.effect(i).insideEdits = {};
}

void Person::use(uint32_t i, Random &random, const std::function<void()> &meanwhile)
{
    OffscreenWindowSystem &system = studio.system;
    const auto move = [&] {
        const auto x = static_cast<int32_t>(random.below(VSTEditor::kWidth)),
                   y = static_cast<int32_t>(random.below(VSTEditor::kHeight));
        system.movePointer(studio.corner(i) + Point{x, y});
    };
    const auto &held = random.pick(kHeldKeys);
    const uint32_t what = random.below(16);
    for (const uint32_t key : held) system.pressKey(key);
    move();
    if (what < 1) {
        note("double click", i);
        system.doubleClick();
    } else if (what < 10) {
        note("drag", i);
        const uint32_t button = what < 2 ? kRightButton : kLeftButton;
        system.pressButton(button);
        for (uint32_t moves = random.below(6); moves > 0; --moves) {
            move();
            meanwhile();
        }
        system.releaseButton(button);
    } else if (what < 12) {
        note("wheel", i);
        for (uint32_t turns = 1 + random.below(5); turns > 0; --turns)
            system.turnWheel(static_cast<int32_t>(random.below(7)) * 120 - 360);
    } else if (what < 15) {
        note("keys", i);
        for (uint32_t keys = 1 + random.below(4); keys > 0; --keys) system.typeKey(random.pick(kKeys));
    } else if (studio.effect(i).record()) {
        note("key by the host", i);
        const auto character = static_cast<int32_t>(random.below(128));
        const intptr_t code = random.below(64);
        studio.effect(i).dispatch(effEditKeyDown, character, code, nullptr, random.real(-1, 16));
    }
    for (const uint32_t key : held) system.releaseKey(key);
}

/// In the middle of a drag.
void Person::meanwhile(uint32_t i, Random &random)
{
    switch (random.below(6)) {
    case 0: note("mouse stolen", i); return studio.system.stealMouse();
    case 1: note("close in a drag", i); return studio.close(i);
    case 2: note("host's window goes in a drag", i); return studio.destroyWindow(i);
    case 3: return studio.system.turnWheel(120);
    case 4: return studio.system.typeKey(kKeyTab);
    default: return studio.system.advance(random.below(50));
    }
}

/// Things that hosts do while an effect waits for their answer.
void Person::actInside(uint32_t i, Random &random)
{
    const DrivenEffect &effect = studio.effect(i), &other = studio.effect(random.below(studio.size()));
    const uint32_t act = random.below(9);
    if (act < 7) Journal::actsInsideCalls.add();
    switch (act) {
    case 0: return studio.close(i);
    case 1: return studio.open(i);
    case 2: return studio.close(other.number);
    case 3: return studio.open(other.number);
    case 4:
        if (other.record()) other.setChunk(effect.chunk(), false);
        return;
    case 5:
        effect.record()->setParameter(effect.record(), static_cast<int32_t>(random.below(39)),
                                      random.real(0, 1));
        return;
    case 6: return studio.system.advance(33);
    default: return;
    }
}
