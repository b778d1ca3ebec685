#pragma once
#include <cstdint>

/// A key as the host numbers it, VstKeyCode's `virt` or else its character, that moves the focus.
bool isHostTab(int32_t code);

/// The Windows virtual key for a host's key; 0 for keys that are the host's own.
uint32_t virtualKeyOf(int32_t code);
