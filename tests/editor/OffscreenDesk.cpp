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
        system.onPrompt = nullptr;
        return confirm ? std::optional(answer) : std::nullopt;
    };
}
