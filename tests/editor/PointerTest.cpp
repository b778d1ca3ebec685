#include <cstdlib>
#include <optional>

#include "tests/editor/OffscreenDesk.h"
#include "tests/editor/Session.h"
#include "ui/controls/SpectrumAxis.h"

// The mouse on a grid of points over the whole editor, between the controls above all.

namespace {

using namespace Platform;

class Pointer : public testing::Test {
protected:
    static constexpr Rect kSpectrum = Rect::at({14, 24}, 377, 167);

    static const ControlRow *controlAt(Point at)
    {
        for (const ControlRow &row : controlTable())
            if (row.place().contains(at)) return &row;
        return nullptr;
    }
    /// The cutoff whose line can be grabbed there.
    std::optional<int32_t> lineAt(Point at) const
    {
        const UI::Native::SpectrumAxis axis(kSpectrum.width(), kSpectrum.height());
        for (int32_t cutoff = 0; cutoff < 3; ++cutoff)
            if (kSpectrum.contains(at) &&
                std::abs(kSpectrum.left + axis.column(session.value(1 + cutoff)) - at.x) <= 5)
                return cutoff;
        return std::nullopt;
    }
    /// The title of the child window there; empty for the background.
    std::string titleAt(Point at)
    {
        const WindowHandle editor = session.editor().window();
        const Point corner = system.screenRect(editor).corner();
        for (const WindowHandle child : system.children(editor))
            if (system.isVisible(child) && system.screenRect(child).contains(at + corner))
                return system.title(child);
        return {};
    }
    template <class Check>
    static void forEachPoint(Check check)
    {
        for (int32_t y = 3; y < VSTEditor::kHeight; y += 11)
            for (int32_t x = 3; x < VSTEditor::kWidth; x += 7) {
                SCOPED_TRACE(testing::Message() << x << ", " << y);
                check(Point{x, y});
                if (testing::Test::HasFailure()) return;
            }
    }

    Session session;
    Desk &desk = *session.desk;
    OffscreenWindowSystem &system = static_cast<OffscreenDesk &>(desk).system;
};

TEST_F(Pointer, IsAnArrowExceptOnTheCutoffLines)
{
    const Point line = kSpectrum.corner() + Point{251, 80};
    forEachPoint([&](Point at) {
        desk.moveTo(line);
        ASSERT_EQ(system.shownCursor(), CursorKind::horizontal);
        desk.moveTo(at);
        EXPECT_EQ(system.shownCursor(), lineAt(at) ? CursorKind::horizontal : CursorKind::arrow);
    });
}

TEST_F(Pointer, ClickBesideTheControlsChangesNoParameter)
{
    const ControlRow &focused = control("gain 3");
    const Rect options = Rect::at({423, 368}, 117, 60); // a click on their labels toggles them
    const std::vector<uint32_t> before = desk.pixels();
    forEachPoint([&](Point at) {
        if (controlAt(at) || options.contains(at)) return;
        session.window(focused).setFocus();
        desk.click(at);
        const std::optional<int32_t> line = lineAt(at);
        const std::string n = line ? std::to_string(1 + *line) : "";
        EXPECT_EQ(session.told(), line ? "b" + n + " e" + n : "");
        const std::string title = titleAt(at);
        if (title.empty() || title.ends_with("Gain Reduction Meter")) // they leave the click to the editor
            EXPECT_EQ(system.focus(), session.editor().window());
        else
            EXPECT_EQ(session.focused(), line ? &controlTable()[2 + static_cast<size_t>(*line)] : &focused);
        desk.wheel(120);
        EXPECT_EQ(session.told(), "");
    });
    EXPECT_EQ(desk.pixels(), before);
}

} // namespace
