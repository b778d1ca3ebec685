#pragma once
#include <cstdint>

/// An optional position, length or precision. `value` is 0 if it is missing.
struct OptionalIndex {
    uint32_t value = 0;
    bool found = false;

    constexpr OptionalIndex() = default;
    constexpr OptionalIndex(uint32_t present) : value(present), found(true) {}
    constexpr explicit operator bool() const { return found; }
    constexpr uint32_t valueOr(uint32_t fallback) const { return found ? value : fallback; }
    constexpr bool operator==(const OptionalIndex &) const = default;
};
