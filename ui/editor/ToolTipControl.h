#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/Geometry.h"
#include "ui/controls/MultiBandSpectrum.h"
#include "ui/controls/ToolTip.h"

namespace UI {

/// Shows and hides the tool tip. The tip appears when the pointer has rested on a control for kDelayMs, or at once
/// within kDelayMs after another tip. It disappears on a click or when the pointer leaves the control.
/// State   idle -> armed (by a move) -> shown (after the delay) -> hidden (the time is stored)
/// Thread  window thread
class ToolTipControl {
public:
    static constexpr uint32_t kDelayMs = 2000;
    static constexpr int32_t kBelowPointer = 20; // pixels

    /// The cutoff lines in `lines` have tips too and take precedence over the targets.
    ToolTipControl(Native::ToolTip *tip, Native::MultiBandSpectrum *lines, int32_t areaWidth,
                   int32_t areaHeight);

    void addTarget(Native::WindowBase *target, uint32_t textRow) { targets.push_back({target, textRow}); }
    /// Handles a mouse event of the frame. `isMove` is true for pointer motion.
    void onMouse(Point at, bool isMove, uint32_t now);
    /// Handles a mouse event while a control has captured the mouse; never hides a tip.
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
    std::optional<uint32_t> armStart;    // milliseconds; last pointer motion
    std::optional<uint32_t> hideTime;    // milliseconds; when the last tip was hidden
    Native::WindowBase *owner = nullptr; // control whose tip is shown
};

} // namespace UI
