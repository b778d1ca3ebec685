#include "tests/soak/Person.h"

#include <array>
#include <string>

#include "host/VSTEditor.h"
#include "tests/soak/Journal.h"

using Journal::note;
using Platform::OffscreenWindowSystem;

namespace {

constexpr std::array<uint32_t, 16> kKeys = {Platform::kKeyTab,
                                            Platform::kKeySpace,
                                            Platform::kKeyReturn,
                                            Platform::kKeyBack,
                                            Platform::kKeyEscape,
                                            Platform::kKeyPageUp,
                                            Platform::kKeyEnd,
                                            Platform::kKeyHome,
                                            Platform::kKeyLeft,
                                            Platform::kKeyRight,
                                            Platform::kKeyUp,
                                            Platform::kKeyDown,
                                            Platform::kKeyF2,
                                            Platform::kKeyPageDown,
                                            '5',
                                            '-'};
constexpr std::array kTexts = {"3", "-12.5", "1e9", "", "nonsense", "20000", "-Inf"};

} // namespace

// What happens inside a call of the effect draws no numbers: how often there is one depends on other threads.

Person::Person(Studio &where, uint64_t seed) : studio(where), random(seed) {}

void Person::step()
{
    const uint32_t wanted = random.below(studio.size()), what = random.below(16);
    const bool actsInside = random.chance(0.1), confirms = random.chance(0.7);
    const std::string typed = random.pick(kTexts);
    const uint32_t promptAct = random.below(8);
    SoakedEffect *const effect = studio.nextOpen(wanted);
    const uint32_t i = effect ? effect->number : wanted; // without an editor it is all on bare windows
    ++Journal::counts.personActions;

    auto act = hostAct(i);
    if (actsInside && effect) effect->insideNextEdit = std::move(act);
    studio.system.onPrompt = [this, i, typed, confirms, promptAct](const Platform::PromptRequest &) {
        if (promptAct == 0) studio.close(i);
        if (promptAct == 1) studio.system.advance(40);
        return confirms ? std::optional(typed) : std::nullopt;
    };
    if (what < 4)
        click(i);
    else if (what < 10)
        drag(i);
    else if (what < 12)
        turnWheel(i);
    else if (what < 15)
        press(i);
    else
        pressAtHost(i);
    studio.effect(i).insideNextEdit = {};
}

Point Person::anywhere(uint32_t i)
{
    const auto x = static_cast<int32_t>(random.below(VSTEditor::kWidth)),
               y = static_cast<int32_t>(random.below(VSTEditor::kHeight));
    return studio.corner(i) + Point{x, y};
}

void Person::click(uint32_t i)
{
    note("click", i);
    const uint32_t how = random.below(4);
    studio.system.movePointer(anywhere(i));
    if (how == 0) return studio.system.doubleClick();
    const uint32_t button = how == 1 ? Platform::kRightButton : Platform::kLeftButton;
    studio.system.pressButton(button);
    studio.system.releaseButton(button);
}

void Person::drag(uint32_t i)
{
    note("drag", i);
    const uint32_t key = random.pick(std::array{0u, 0u, Platform::kKeyShift, Platform::kKeyControl});
    if (key) studio.system.pressKey(key);
    studio.system.movePointer(anywhere(i));
    studio.system.pressButton();
    for (uint32_t moves = random.below(6); moves > 0; --moves) {
        studio.system.movePointer(anywhere(i));
        if (random.chance(0.15)) meanwhile(i);
    }
    studio.system.releaseButton();
    if (key) studio.system.releaseKey(key);
}

void Person::turnWheel(uint32_t i)
{
    note("wheel", i);
    studio.system.movePointer(anywhere(i));
    for (uint32_t turns = 1 + random.below(5); turns > 0; --turns)
        studio.system.turnWheel(static_cast<int32_t>(random.below(7)) * 120 - 360);
}

void Person::press(uint32_t i)
{
    note("key", i);
    const uint32_t held = random.pick(std::array{0u, 0u, Platform::kKeyShift, Platform::kKeyControl});
    if (held) studio.system.pressKey(held);
    for (uint32_t presses = 1 + random.below(4); presses > 0; --presses)
        studio.system.typeKey(random.pick(kKeys));
    if (held) studio.system.releaseKey(held);
}

void Person::pressAtHost(uint32_t i)
{
    note("key by the host", i);
    const auto character = static_cast<int32_t>(random.below(128));
    const auto code = static_cast<intptr_t>(random.below(64));
    const float modifiers = random.real(-1, 16);
    if (studio.effect(i).record())
        studio.effect(i).dispatch(effEditKeyDown, character, code, nullptr, modifiers);
}

/// In the middle of a drag.
void Person::meanwhile(uint32_t i)
{
    switch (random.below(6)) {
    case 0: note("mouse stolen", i); return studio.system.stealMouse();
    case 1: note("close in a drag", i); return studio.close(i);
    case 2: note("host's window goes in a drag", i); return studio.destroyWindow(i);
    case 3: return studio.system.turnWheel(120);
    case 4: return studio.system.typeKey(Platform::kKeyTab);
    default: return studio.system.advance(random.below(50));
    }
}

/// One of the things that hosts do while an effect waits for its answer.
std::function<void()> Person::hostAct(uint32_t i)
{
    const uint32_t other = random.below(studio.size()), what = random.below(6);
    const auto index = static_cast<int32_t>(random.below(39));
    const float value = random.real(0, 1);
    switch (what) {
    case 0: return [=, this] { studio.close(i); };
    case 1: return [=, this] { studio.close(other); };
    case 2: return [=, this] { studio.open(other); };
    case 3:
        return [=, this] {
            const SoakedEffect::Bytes chunk = studio.effect(i).chunk();
            if (studio.effect(other).record()) studio.effect(other).setChunk(chunk, false);
        };
    case 4:
        return [=, this] {
            AEffect *const effect = studio.effect(i).record();
            effect->setParameter(effect, index, value);
        };
    default: return [=, this] { studio.system.advance(33); };
    }
}
