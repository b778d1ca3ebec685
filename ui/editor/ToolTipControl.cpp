#include "ui/editor/ToolTipControl.h"

#include <algorithm>

#include "ui/editor/TextTable.h"

namespace UI {

ToolTipControl::ToolTipControl(Native::ToolTip *tip, Native::MultiBandSpectrum *lines, int32_t areaWidth,
                               int32_t areaHeight)
    : toolTip(tip), spectrum(lines), width(areaWidth), height(areaHeight)
{
    toolTip->hide();
}

std::optional<ToolTipControl::Found> ToolTipControl::find(Point at) const
{
    const Rect lines = spectrum->frameRect();
    if (lines.contains(at))
        if (const OptionalIndex cutoff = spectrum->hitTest(at.x - lines.left))
            return Found{spectrum, kFirstCutoffTip + cutoff.value};
    std::optional<Found> found;
    for (const Target &target : targets)
        if (target.window->frameRect().contains(at)) found = Found{target.window, target.textRow};
    return found;
}

bool ToolTipControl::isStillOn(Point at) const
{
    const Rect place = owner->frameRect();
    if (owner == spectrum) return spectrum->hitTest(at.x - place.left).found;
    return place.contains(at);
}

void ToolTipControl::onMouse(Point at, bool isMove, uint32_t now)
{
    if (owner && !(isMove && isStillOn(at))) hide(now);
    if (!isMove) hideTime.reset(); // after a click the next tip waits for the full delay
    arm(at, isMove, now);
}

void ToolTipControl::onCapturedMouse(Point at, bool isMove, uint32_t now)
{
    arm(at, isMove, now); // the press that started the capture hid the tip
}

void ToolTipControl::arm(Point at, bool isMove, uint32_t now)
{
    if (!owner && !(isMove && lastPos == at)) armStart = now;
    lastPos = at;
}

void ToolTipControl::onTick(Point pointer, uint32_t now)
{
    const bool followsAnother = hideTime && now - *hideTime <= kDelayMs;
    if (!armStart || now - *armStart < (followsAnother ? 0 : kDelayMs)) return;
    armStart.reset();
    if (const auto found = find(pointer)) show(*found, pointer);
}

void ToolTipControl::show(const Found &found, Point pointer)
{
    owner = found.owner;
    toolTip->setRow(found.textRow);
    const int32_t x = std::min(std::max(pointer.x, 0), width - toolTip->width());
    const int32_t y = std::min(std::max(pointer.y + kBelowPointer, 0), height - toolTip->height());
    toolTip->setGeometry(x, y, toolTip->width(), toolTip->height());
    toolTip->show(false);
    toolTip->raise();
}

void ToolTipControl::hide(uint32_t now)
{
    toolTip->hide();
    hideTime = now;
    armStart.reset();
    owner = nullptr;
}

} // namespace UI
