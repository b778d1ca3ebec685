#pragma once
#include "platform/WindowSystem.h"

/// The window system of these tests: the real one on Windows, and one in memory elsewhere.
Platform::WindowSystem &testWindowSystem();
