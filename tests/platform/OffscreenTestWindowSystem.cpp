#include "platform/offscreen/OffscreenWindowSystem.h"
#include "tests/platform/TestWindowSystem.h"

Platform::WindowSystem &testWindowSystem()
{
    static Platform::OffscreenWindowSystem system;
    return system;
}
