#pragma once
#include "ui/window/CanvasWindow.h"
#include "ui/window/TextSource.h"

namespace UI::Native {

/// A small box with a row of the editor's texts, above all else. The main window shows, places and hides it.
/// It has no record among the classes of the family.
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
