#pragma once
#include "ui/window/CanvasWindow.h"
#include "ui/window/TextSource.h"

namespace UI::Native {

/// A small box above the controls that shows one of the editor's strings. ToolTipControl shows, moves and hides it. It
/// has no reflection record.
class ToolTip : public CanvasWindow {
public:
    ToolTip(FrameBase *ownerFrame, const TextSource &texts);

    void setRow(OptionalIndex textRow);
    void redraw() override;
    bool takesMouse() const override { return false; }

private:
    void makeBox(int32_t boxWidth, int32_t boxHeight);

    const TextSource &source;
    OptionalIndex row;
};

} // namespace UI::Native
