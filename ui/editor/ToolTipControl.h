#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/Geometry.h"
#include "ui/controls/MultiBandSpectrum.h"
#include "ui/controls/ToolTip.h"

namespace UI {

/// When a tool tip comes and goes: it comes when the pointer has rested on a control for a while, and at once
/// where another tip has just gone; it goes when the pointer leaves its control, and at any click.
/// State   idle -> armed, by a move -> shown, after the delay -> hidden, with its time kept
/// Thread  the window's
class ToolTipControl {
public:
    static constexpr uint32_t kDelayMs = 2000;
    static constexpr int32_t kBelowPointer = 20; // pixels

    /// The spectrum tells by itself on which of its lines a point lies; it is asked first.
    ToolTipControl(Native::ToolTip *tip, Native::MultiBandSpectrum *lines, int32_t areaWidth,
                   int32_t areaHeight);

    void addTarget(Native::WindowBase *target, uint32_t textRow) { targets.push_back({target, textRow}); }
    /// A mouse event of the frame; `isMove` for one that only moves the pointer.
    void onMouse(Point at, bool isMove, uint32_t now);
    /// The same while a control has captured the mouse: no tip is taken away.
    void onCapturedMouse(Point at, bool isMove, uint32_t now);
    void onTick(Point pointer, uint32_t now);

private:
    struct Target {
        Native::WindowBase *window;
        uint32_t textRow;
    };
    struct Found {
        Native::WindowBase *owner;
        uint32_t textRow;
    };

    std::optional<Found> find(Point at) const;
    bool isStillOn(Point at) const;
    void arm(Point at, bool isMove, uint32_t now);
    void show(const Found &found, Point pointer);
    void hide(uint32_t now);

    Native::ToolTip *const toolTip;
    Native::MultiBandSpectrum *const spectrum;
    const int32_t width, height;
    std::vector<Target> targets;
    std::optional<Point> lastPos;
    std::optional<uint32_t> armStart;    // milliseconds, when the pointer last moved
    std::optional<uint32_t> hideTime;    // milliseconds, when the last tip went
    Native::WindowBase *owner = nullptr; // of the tip on show
};

} // namespace UI
