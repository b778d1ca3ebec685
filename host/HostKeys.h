#pragma once
#include <cstdint>

/// True for a key that moves the focus. `code` is VstKeyCode's `virt`, or its character if `virt` is 0.
bool isHostTab(int32_t code);

/// Converts a host key code to a Windows virtual key. Returns 0 for keys that the host should handle.
uint32_t virtualKeyOf(int32_t code);
