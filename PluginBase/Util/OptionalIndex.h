#pragma once
#include <cstdint>

/// A number that may be missing: a position that was not found, a length or precision that was not given. A
/// missing one has value 0.
struct OptionalIndex {
    uint32_t value = 0;
    bool found = false;

    constexpr OptionalIndex() = default;
    constexpr OptionalIndex(uint32_t present) : value(present), found(true) {}
    constexpr explicit operator bool() const { return found; }
    constexpr uint32_t valueOr(uint32_t fallback) const { return found ? value : fallback; }
    constexpr bool operator==(const OptionalIndex &) const = default;
};
