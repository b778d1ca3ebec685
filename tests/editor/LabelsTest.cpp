#include "tests/editor/OffscreenDesk.h"
#include "tests/editor/Session.h"
#include "ui/editor/TextTable.h"

namespace {

using namespace Platform;
using UI::Language;

/// What the host speaks, for as long as the object lives.
struct Speaking {
    explicit Speaking(Language::Index language) { Language::prefer(language); }
    ~Speaking() { Language::prefer(std::nullopt); }
    Speaking(const Speaking &) = delete;
};

class SpeakingSession : Speaking, public Session {
public:
    explicit SpeakingSession(Language::Index language) : Speaking(language) {}

    OffscreenWindowSystem &system() { return static_cast<OffscreenDesk &>(*desk).system; }
    /// Of the visible windows with such a title, in the order in which they were made.
    std::vector<Rect> places(const char *titleBegin)
    {
        std::vector<Rect> found;
        const Point corner = system().screenRect(editor().window()).corner();
        for (const WindowHandle child : system().children(editor().window()))
            if (system().isVisible(child) && system().title(child).starts_with(titleBegin))
                found.push_back(system().screenRect(child).moved(Point{} - corner));
        return found;
    }
};

/// A label as it is placed in English.
struct Label {
    uint32_t row;
    Rect field;
};

std::vector<Label> labels()
{
    std::vector<Label> made;
    for (uint32_t row = 0; row < 24; ++row) {
        const UI::Native::TextRow &text = UI::textRow(row);
        const Rect field = Rect::at({text.x, text.y}, text.width, text.height);
        const bool ofAllBands = row >= 12 && row <= 16;
        for (uint32_t band = 0; band < 4; ++band)
            if (row == band || ofAllBands)
                made.push_back({row, field.moved(Point{7 + 104 * int(band), 236})});
        if (row >= 4 && !ofAllBands) made.push_back({row, field});
    }
    return made;
}

TEST(Labels, OtherLanguagesKeepToTheirFields)
{
    const std::vector<Label> all = labels();
    for (uint32_t index = 1; index < Language::languages; ++index) {
        SpeakingSession session(static_cast<Language::Index>(index));
        const Language language;
        ASSERT_NE(language.labelFont(), nullptr);
        const std::vector<Rect> places = session.places("Translated text '");
        ASSERT_EQ(places.size(), all.size());
        const Bitmap shot = session.desk->shot();
        for (size_t i = 0; i < places.size(); ++i) {
            const auto &[row, field] = all[i];
            SCOPED_TRACE(std::to_string(index) + ", " + UI::textRow(row).english);
            const std::u16string words = language.string(row);
            ASSERT_FALSE(words.empty());
            const int32_t wide = session.system().measureText(*language.labelFont(), words).width;
            const int32_t width = places[i].width();
            EXPECT_LE(width, field.width());
            if (wide <= field.width()) {
                EXPECT_EQ(width, std::max(wide, 1));
            }
            const bool right = UI::textRow(row).alignment == UI::Native::TextRow::right;
            const Point corner{right ? field.right - width + 1 : field.left, field.top};
            EXPECT_EQ(places[i], Rect::at(corner, width, field.height()));
            Picture empty(width, field.height());
            empty.drawGround(places[i]);
            EXPECT_EQ(!empty.isShown(shot, corner), words != u" ") << "drawn in letters";
        }
    }
}

// Tool tips, and the mark of the focus.

class ToolTips : public testing::Test {
protected:
    static constexpr uint32_t kTickMs = 33;

    /// The tip's place; empty while there is none.
    Rect tip()
    {
        const std::vector<Rect> tips = session.places("ToolTip");
        return tips.empty() ? Rect{} : tips.front();
    }
    testing::AssertionResult showsTip(uint32_t row)
    {
        const String image = String("TranslatedText%1.png").arg(row);
        const UI::Native::PixmapRef words = UI::Native::loadPixmap(image);
        const Rect place = tip(), whole = Rect::at({}, words->width + 12, words->height + 2);
        if (place.width() != whole.width() || place.height() != whole.height())
            return testing::AssertionFailure() << place.width() << " by " << place.height();
        Picture wanted(whole.width(), whole.height());
        wanted.fill({1, whole.right - 1, 1, whole.bottom - 1}, 0xFFFFE1).draw(image, {6, 1});
        return wanted.isShown(desk.shot(), place.corner());
    }

    SpeakingSession session{Language::english};
    Desk &desk = *session.desk;
};

TEST_F(ToolTips, ComesAfterARestAndGoesWithThePointer)
{
    const Point solo = control("solo 1").centre(), nowhere{300, 480};
    desk.moveTo(nowhere);
    desk.moveTo(solo);
    desk.wait(1980);
    EXPECT_TRUE(tip().isEmpty());
    desk.wait(66);
    EXPECT_TRUE(showsTip(32));
    EXPECT_EQ(tip().corner(), (solo + Point{0, 20}));
    desk.moveTo(solo + Point{3, 2});
    EXPECT_FALSE(tip().isEmpty()) << "still on it";
    desk.moveTo(control("bypass 1").centre());
    EXPECT_TRUE(tip().isEmpty());
    desk.wait(kTickMs);
    EXPECT_TRUE(showsTip(36)) << "one after another comes at once";
    desk.moveTo(nowhere);
    desk.wait(4000);
    EXPECT_TRUE(tip().isEmpty());
    desk.moveTo(solo); // long after the last
    desk.wait(1900);
    EXPECT_TRUE(tip().isEmpty());
}

TEST_F(ToolTips, DescribeEveryTarget)
{
    std::vector<std::pair<Point, uint32_t>> targets = {{control("output slider").centre(), 24},
                                                       {control("limiter bypass").centre(), 44}};
    for (uint32_t i = 0; i < 4; ++i)
        for (const auto &[kind, first] :
             {std::pair{"solo ", 32u}, {"bypass ", 36u}, {"threshold slider ", 40u}})
            targets.emplace_back(control(kind + std::to_string(i + 1)).centre(), first + i);
    for (const auto &[x, row] : {std::pair{14 + 98, 25u}, {14 + 251, 26u}, {14 + 338, 27u}})
        targets.emplace_back(Point{x, 100}, row);
    for (const auto &[at, row] : targets) {
        SCOPED_TRACE(row);
        desk.moveTo({300, 480});
        desk.moveTo(at);
        desk.wait(2100);
        EXPECT_TRUE(showsTip(row));
    }
}

TEST_F(ToolTips, AClickTakesItAwayForTheWholeDelay)
{
    desk.moveTo(control("limiter bypass").centre());
    desk.wait(2050);
    EXPECT_TRUE(showsTip(44));
    EXPECT_EQ(tip().right, 546) << "pushed into the window";
    desk.press();
    desk.wait(66);
    EXPECT_TRUE(tip().isEmpty());
    desk.release();
    desk.moveTo(control("solo 4").centre());
    desk.wait(1900);
    EXPECT_TRUE(tip().isEmpty());
    desk.wait(200);
    EXPECT_TRUE(showsTip(35));
    desk.wheel(120);
    EXPECT_FALSE(tip().isEmpty()) << "the wheel is no click";

    const Point slider = control("threshold slider 2").centre(), beneath = slider + Point{1, 25};
    desk.moveTo(slider);
    desk.wait(2050);
    ASSERT_TRUE(tip().contains(beneath));
    session.told();
    desk.click(beneath);
    EXPECT_EQ(session.told(), bracketed(11)) << "a tip leaves the mouse to what it lies on";
}

TEST_F(ToolTips, ThePointersShapeTellsWhatCanBeDragged)
{
    const auto shape = [&] { return session.system().shownCursor(); };
    const Point field = control("gain 1").centre();
    desk.moveTo(field);
    EXPECT_EQ(shape(), CursorKind::arrow);
    desk.press();
    desk.moveTo(field + Point{2, 0});
    EXPECT_EQ(shape(), CursorKind::drag);
    desk.release();
    EXPECT_EQ(shape(), CursorKind::arrow);
}

TEST_F(ToolTips, TheMarkOfTheFocusStaysForThreeSeconds)
{
    const ControlRow &row = control("ratio 1");
    const auto expectMark = [&](bool marked) {
        EXPECT_EQ(session.mainWindow().showsFocus(), marked);
        EXPECT_TRUE(session.showsValue(row));
    };
    session.window(row).setFocus();
    desk.wait(kTickMs);
    expectMark(false);
    desk.type(kKeyUp);
    desk.wait(2000);
    desk.type(kKeyUp); // once more from here
    desk.wait(2900);
    expectMark(true);
    desk.wait(150);
    expectMark(false);
}

} // namespace
