#pragma once
#include <algorithm>
#include <cstdint>

/// A position in pixels; x to the right, y down.
struct Point {
    int32_t x = 0, y = 0;

    constexpr Point operator+(Point other) const { return {x + other.x, y + other.y}; }
    constexpr Point operator-(Point other) const { return {x - other.x, y - other.y}; }
    constexpr bool operator==(const Point &) const = default;
};

/// A rectangle in pixels, all four sides inclusive; empty when `right` < `left` or `bottom` < `top`.
struct Rect {
    int32_t left = 0, right = -1, top = 0, bottom = -1;

    static constexpr Rect at(Point corner, int32_t width, int32_t height)
    {
        return {corner.x, corner.x + width - 1, corner.y, corner.y + height - 1};
    }
    constexpr int32_t width() const { return right - left + 1; }
    constexpr int32_t height() const { return bottom - top + 1; }
    constexpr bool isEmpty() const { return right < left || bottom < top; }
    constexpr Point corner() const { return {left, top}; }
    constexpr bool contains(Point point) const
    {
        return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
    }
    constexpr Rect moved(Point by) const { return {left + by.x, right + by.x, top + by.y, bottom + by.y}; }
    constexpr Rect intersected(const Rect &other) const
    {
        return {std::max(left, other.left), std::min(right, other.right), std::max(top, other.top),
                std::min(bottom, other.bottom)};
    }
    constexpr bool operator==(const Rect &) const = default;
};

/// A part of a window; the whole window if not `present`.
struct OptionalRect {
    Rect rect;
    bool present = false;

    constexpr OptionalRect() = default;
    constexpr OptionalRect(const Rect &part) : rect(part), present(true) {}
};
