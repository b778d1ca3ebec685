#include "tests/editor/OffscreenDesk.h"

#include <string>

std::unique_ptr<Desk> Desk::make(int32_t width, int32_t height)
{
    return std::make_unique<OffscreenDesk>(width, height);
}

OffscreenDesk::OffscreenDesk(int32_t width, int32_t height)
{
    Platform::useWindowSystem(&system);
    host = system.makeHostWindow(width, height, kCorner);
}

OffscreenDesk::~OffscreenDesk() { Platform::useWindowSystem(nullptr); }

void OffscreenDesk::destroyWindow() { system.destroyWindow(host); }

void OffscreenDesk::answerPrompt(const char *text, bool confirm)
{
    system.onPrompt = [this, answer = std::string(text), confirm](const Platform::PromptRequest &) {
        const auto kept = std::exchange(system.onPrompt, {}); // keeps this lambda alive until it returns
        if (const auto first = std::exchange(whilePrompted, {})) first();
        return confirm ? std::optional(answer) : std::nullopt;
    };
}

ResourceUsage OffscreenDesk::resourceUsage() const
{
    ResourceUsage now = processUsage();
    now["windows"] = static_cast<int64_t>(system.windowCount());
    now["timers"] = static_cast<int64_t>(system.timerCount());
    now["heap"] -=
        static_cast<int64_t>(system.paints.capacity() * sizeof system.paints[0]); // not the editor's
    return now;
}
