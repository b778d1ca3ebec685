#include "tests/simulation/SimulatedUser.h"

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

void SimulatedUser::step(Random &random)
{
    const uint32_t i = host.nextOpen(random.below(host.size()));
    if (random.chance(0.4))
        host.effect(i).insideCallbacks = [this, i, own = Random(random.next())]() mutable {
            actInside(i, own);
        };
    const std::string typed = random.pick(std::array{"3", "-12.5", "1e9", "", "nonsense", "20000", "-Inf"});
    const bool confirms = random.chance(0.7);
    const uint32_t promptAct = random.below(8);
    host.system.onPrompt = [=, this](const PromptRequest &) {
        if (promptAct == 0) host.close(i);
        if (promptAct == 1) host.system.advance(40);
        return confirms ? std::optional(typed) : std::nullopt;
    };
    use(i, random, [&] {
        if (random.chance(0.15)) interruptDrag(i, random);
    });
    host.effect(i).insideCallbacks = {};
}

void SimulatedUser::use(uint32_t i, Random &random, const std::function<void()> &meanwhile)
{
    OffscreenWindowSystem &system = host.system;
    const auto move = [&] {
        const auto x = static_cast<int32_t>(random.below(VSTEditor::kWidth)),
                   y = static_cast<int32_t>(random.below(VSTEditor::kHeight));
        system.movePointer(host.corner(i) + Point{x, y});
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
    } else if (host.effect(i).record()) {
        note("key by the host", i);
        const auto character = static_cast<int32_t>(random.below(128));
        const intptr_t code = random.below(64);
        host.effect(i).dispatch(effEditKeyDown, character, code, nullptr, random.real(-1, 16));
    }
    for (const uint32_t key : held) system.releaseKey(key);
}

void SimulatedUser::interruptDrag(uint32_t i, Random &random)
{
    switch (random.below(6)) {
    case 0: note("mouse stolen", i); return host.system.stealMouse();
    case 1: note("host closes the editor in a drag", i); return host.close(i);
    case 2: note("host destroys its window in a drag", i); return host.destroyWindow(i);
    case 3: return host.system.turnWheel(120);
    case 4: return host.system.typeKey(kKeyTab);
    default: return host.system.advance(random.below(50));
    }
}

void SimulatedUser::actInside(uint32_t i, Random &random)
{
    const EffectInstance &effect = host.effect(i), &other = host.effect(random.below(host.size()));
    const uint32_t act = random.below(9);
    if (act < 7) Journal::nestedCalls.add();
    switch (act) {
    case 0: return host.close(i);
    case 1: return host.open(i);
    case 2: return host.close(other.number);
    case 3: return host.open(other.number);
    case 4:
        if (other.record()) other.setChunk(effect.chunk(), false);
        return;
    case 5:
        effect.record()->setParameter(effect.record(), static_cast<int32_t>(random.below(39)),
                                      random.real(0, 1));
        return;
    case 6: return host.system.advance(33);
    default: return;
    }
}
