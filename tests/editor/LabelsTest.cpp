#include "tests/editor/OffscreenDesk.h"
#include "tests/editor/Session.h"
#include "ui/TextTable.h"

namespace {

using namespace Platform;
using UI::Language;

/// A label as it is placed in English.
struct LabelRow {
    uint32_t row;
    Rect place;
};

std::vector<LabelRow> labelTable()
{
    std::vector<LabelRow> labels;
    for (uint32_t row = 0; row < 24; ++row) {
        const UI::Native::TextRow &text = UI::textRow(row);
        const Rect place = Rect::at({text.x, text.y}, text.width, text.height);
        if (row >= 12 && row <= 16)
            for (int32_t band = 0; band < 4; ++band)
                labels.push_back({row, place.moved({7 + 104 * band, 236})});
        else
            labels.push_back(
                {row, row < 4 ? place.moved({7 + 104 * static_cast<int32_t>(row), 236}) : place});
    }
    return labels;
}

/// A session in a language of the host's.
struct Speaking {
    explicit Speaking(Language::Index index) { Language::prefer(index); }
    ~Speaking() { Language::prefer(std::nullopt); }
    Speaking(const Speaking &) = delete;
};

OffscreenWindowSystem &memory(Session &session) { return static_cast<OffscreenDesk &>(*session.desk).system; }

/// The places of the label windows, in the order in which they were made.
std::vector<Rect> labelWindows(Session &session)
{
    std::vector<Rect> places;
    const Point corner = memory(session).screenRect(session.editor().window()).corner();
    for (const WindowHandle child : memory(session).children(session.editor().window()))
        if (memory(session).title(child).starts_with("Translated text '"))
            places.push_back(memory(session).screenRect(child).moved(Point{} - corner));
    return places;
}

TEST(LabelsTest, OtherLanguagesKeepToTheirFields)
{
    for (uint32_t index = 1; index < Language::languages; ++index) {
        const Speaking speaking(static_cast<Language::Index>(index));
        Session session;
        const Language language;
        ASSERT_NE(language.labelFont(), nullptr);
        const std::vector<LabelRow> labels = labelTable();
        const std::vector<Rect> places = labelWindows(session);
        ASSERT_EQ(places.size(), labels.size());
        const Bitmap shot = session.desk->shot();
        for (size_t i = 0; i < labels.size(); ++i) {
            const auto &[row, field] = labels[i];
            SCOPED_TRACE(std::to_string(index) + ", " + UI::textRow(row).english);
            const std::u16string words = language.string(row);
            ASSERT_FALSE(words.empty());
            const int32_t wide = memory(session).measureText(*language.labelFont(), words).width;
            EXPECT_LE(places[i].width(), field.width());
            if (wide <= field.width()) {
                EXPECT_EQ(places[i].width(), std::max(wide, 1));
            }
            if (UI::textRow(row).alignment == UI::Native::TextRow::right) {
                EXPECT_EQ(places[i].right, field.right) << "ends where the image does";
            } else {
                EXPECT_EQ(places[i].left, field.left);
            }
            EXPECT_EQ(places[i].top, field.top);
            EXPECT_EQ(places[i].height(), field.height());
            for (const ControlRow &control : controlTable())
                EXPECT_TRUE(places[i].intersected(control.place()).isEmpty()) << control.name;
            Picture empty(places[i].width(), places[i].height());
            empty.drawGround(places[i]);
            EXPECT_EQ(!empty.isShown(shot, places[i].corner()), words != u" ") << "drawn in letters";
        }
    }
}

// Tool tips, and the mark of the focus.

class ToolTipTest : public testing::Test {
protected:
    static constexpr uint32_t kTickMs = 33;

    /// The tip's place; empty while there is none.
    Rect tip()
    {
        const Point corner = memory(*session).screenRect(session->editor().window()).corner();
        for (const WindowHandle child : memory(*session).children(session->editor().window()))
            if (memory(*session).title(child) == "ToolTip" && memory(*session).isVisible(child))
                return memory(*session).screenRect(child).moved(Point{} - corner);
        return {};
    }
    testing::AssertionResult showsTip(uint32_t row)
    {
        const String image = String("TranslatedText%1.png").arg(row);
        const UI::Native::PixmapRef words = UI::Native::loadPixmap(image);
        const Rect place = tip(), whole = Rect::at({}, words->width + 12, words->height + 2);
        if (place.width() != whole.width() || place.height() != whole.height())
            return testing::AssertionFailure() << place.width() << " by " << place.height();
        Picture wanted(whole.width(), whole.height());
        wanted.fill(whole, 0).fill({1, whole.right - 1, 1, whole.bottom - 1}, 0xFFFFE1).draw(image, {6, 1});
        return wanted.isShown(desk().shot(), place.corner());
    }
    Desk &desk() { return *session->desk; }

    const Speaking english{Language::english};
    std::unique_ptr<Session> session = std::make_unique<Session>();
};

TEST_F(ToolTipTest, ComesAfterARestAndGoesWithThePointer)
{
    const Point solo = control("solo 1").centre();
    desk().moveTo({300, 480});
    desk().moveTo(solo);
    desk().wait(1980);
    EXPECT_TRUE(tip().isEmpty());
    desk().wait(66);
    EXPECT_TRUE(showsTip(32));
    EXPECT_EQ(tip().corner(), (solo + Point{0, 20}));
    desk().moveTo(solo + Point{3, 2});
    EXPECT_FALSE(tip().isEmpty()) << "still on it";
    desk().moveTo(control("bypass 1").centre());
    EXPECT_TRUE(tip().isEmpty());
    desk().wait(kTickMs);
    EXPECT_TRUE(showsTip(36)) << "one after another comes at once";
    desk().moveTo({300, 480});
    desk().wait(4000);
    EXPECT_TRUE(tip().isEmpty());
    desk().moveTo(solo); // long after the last
    desk().wait(1900);
    EXPECT_TRUE(tip().isEmpty());
}

TEST_F(ToolTipTest, AClickTakesItAwayForTheWholeDelay)
{
    desk().moveTo(control("limiter bypass").centre());
    desk().wait(2050);
    EXPECT_TRUE(showsTip(44));
    EXPECT_EQ(tip().right, 546) << "pushed into the window";
    desk().press();
    desk().wait(66);
    EXPECT_TRUE(tip().isEmpty());
    desk().release();
    desk().moveTo(control("solo 4").centre());
    desk().wait(1900);
    EXPECT_TRUE(tip().isEmpty());
    desk().wait(200);
    EXPECT_TRUE(showsTip(35));
    desk().wheel(120);
    EXPECT_FALSE(tip().isEmpty()) << "the wheel is no click";

    const Point slider = control("threshold slider 2").centre(), beneath = slider + Point{1, 25};
    desk().moveTo(slider);
    desk().wait(2050);
    ASSERT_TRUE(tip().contains(beneath));
    session->told();
    desk().click(beneath);
    EXPECT_EQ(session->told(), "b11 v11 e11") << "a tip leaves the mouse to what it lies on";
}

TEST_F(ToolTipTest, ThePointersShapeTellsWhatCanBeDragged)
{
    const auto shape = [&] { return memory(*session).shownCursor(); };
    const Point line{14 + 251, 100}, field = control("gain 1").centre();
    desk().moveTo(line + Point{6, 0});
    EXPECT_EQ(shape(), CursorKind::arrow);
    desk().moveTo(line + Point{5, 0});
    EXPECT_EQ(shape(), CursorKind::horizontal);
    desk().moveTo(field);
    EXPECT_EQ(shape(), CursorKind::arrow);
    desk().press();
    desk().moveTo(field + Point{2, 0});
    EXPECT_EQ(shape(), CursorKind::drag);
    desk().release();
    EXPECT_EQ(shape(), CursorKind::arrow);
}

TEST_F(ToolTipTest, TheMarkOfTheFocusStaysForThreeSeconds)
{
    const ControlRow &row = control("ratio 1");
    session->window(row).setFocus();
    desk().wait(kTickMs);
    EXPECT_FALSE(session->mainWindow().showsFocus());
    EXPECT_TRUE(session->showsField(row, "1.0"));
    desk().type(kKeyUp);
    desk().wait(2000);
    desk().type(kKeyUp); // once more from here
    desk().wait(2900);
    EXPECT_TRUE(session->mainWindow().showsFocus());
    EXPECT_TRUE(session->showsField(row, "3.0"));
    desk().wait(150);
    EXPECT_FALSE(session->mainWindow().showsFocus());
    EXPECT_TRUE(session->showsField(row, "3.0")) << "drawn without the mark";
}

} // namespace
