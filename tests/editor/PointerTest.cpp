#include <cstdlib>

#include "tests/editor/OffscreenDesk.h"
#include "tests/editor/Session.h"
#include "ui/controls/SpectrumAxis.h"

// Moves and clicks the mouse on a grid of points over the whole editor, including the space between controls.

namespace {

using namespace Platform;

class Pointer : public testing::Test {
protected:
    static constexpr Rect kSpectrum = Rect::at({14, 24}, 377, 167);

    Pointer() { session.put(1, 1700.0f); } // nine columns from its neighbour
    /// Field of the cutoff whose line can be grabbed at `at`. If two are equally near, the higher.
    const ControlRow *lineAt(Point at) const
    {
        const UI::Native::SpectrumAxis axis(kSpectrum.width(), kSpectrum.height());
        const ControlRow *nearest = nullptr;
        int32_t least = 5;
        for (const ControlRow &row : controlTable()) {
            if (!row.isCutoff() || !kSpectrum.contains(at)) continue;
            const int32_t distance = std::abs(kSpectrum.left + axis.column(session.value(row.host)) - at.x);
            if (distance > least) continue;
            least = distance;
            nearest = &row;
        }
        return nearest;
    }
    /// Title of the child window at `at`; empty for the background.
    std::string titleAt(Point at)
    {
        const WindowHandle editor = session.editor().window();
        for (const WindowHandle child : system.children(editor))
            if (system.isVisible(child) &&
                system.screenRect(child).contains(at + system.screenRect(editor).corner()))
                return system.title(child);
        return {};
    }
    template <class Check>
    void forEachPoint(Check check)
    {
        for (Point at{3, 3}; at.y < VSTEditor::kHeight; at = {3, at.y + 11})
            for (; at.x < VSTEditor::kWidth && !HasFailure(); at.x += 3) {
                SCOPED_TRACE(testing::Message() << at.x << ", " << at.y << " on " << titleAt(at));
                check(at);
            }
    }

    Session session;
    Desk &desk = *session.desk;
    OffscreenWindowSystem &system = static_cast<OffscreenDesk &>(desk).system;
};

TEST_F(Pointer, IsAnArrowExceptOnTheCutoffLines)
{
    forEachPoint([&](Point at) {
        system.showCursor(system.loadCursor(CursorKind::drag));
        desk.moveTo(at + Point{0, 1});
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
        const auto isHere = [&](const ControlRow &row) { return row.place().contains(at); };
        if (std::ranges::any_of(controlTable(), isHere) || options.contains(at)) return;
        session.window(focused).setFocus();
        desk.click(at);
        const ControlRow *const line = lineAt(at);
        const std::string n = line ? std::to_string(line->host) : "";
        EXPECT_EQ(session.told(), line ? "b" + n + " e" + n : "");
        const std::string title = titleAt(at);
        if (title.empty() || title.ends_with("Gain Reduction Meter")) // meters pass clicks to the editor
            EXPECT_EQ(system.focus(), session.editor().window());
        else
            EXPECT_EQ(session.focused(), line ? line : &focused);
        desk.wheel(120);
        EXPECT_EQ(session.told(), "");
    });
    EXPECT_EQ(desk.pixels(), before);
}

TEST_F(Pointer, ClickOnAFieldAsksForItsNumber)
{
    for (const ControlRow &row : controlTable()) {
        if (!row.isField()) continue;
        SCOPED_TRACE(row.name);
        std::optional<PromptRequest> asked;
        system.onPrompt = [&](const PromptRequest &request) {
            asked = request;
            return std::nullopt;
        };
        desk.click(row.corner + Point{3, 3});
        ASSERT_TRUE(asked);
        EXPECT_EQ(asked->owner, session.editor().window());
        EXPECT_EQ(asked->centre, windowSystem().toScreen(asked->owner, row.centre()));
        EXPECT_EQ(asked->width, row.place().width() + 21);
        EXPECT_TRUE(session.showsField(row, asked->text.c_str()));
        EXPECT_EQ(std::string(asked->allowed.begin(), asked->allowed.end()), "0123456789.,-");
    }
}

} // namespace
