#include "tests/editor/OffscreenDesk.h"
#include "tests/editor/Session.h"
#include "ui/editor/TextTable.h"

namespace {

using namespace Platform;
using UI::Language;

/// Sets the editor's language during its lifetime.
struct HostLanguage {
    explicit HostLanguage(Language::Index language) { Language::prefer(language); }
    ~HostLanguage() { Language::prefer(std::nullopt); }
    HostLanguage(const HostLanguage &) = delete;
};

class LanguageSession : HostLanguage, public Session {
public:
    explicit LanguageSession(Language::Index language) : HostLanguage(language) {}

    OffscreenWindowSystem &system() { return static_cast<OffscreenDesk &>(*desk).system; }
    /// Rectangles of the visible windows whose title begins with `titleBegin`, in order of creation.
    std::vector<Rect> windowRects(const char *titleBegin)
    {
        std::vector<Rect> found;
        const Point corner = system().screenRect(editor().window()).corner();
        for (const WindowHandle child : system().children(editor().window()))
            if (system().isVisible(child) && system().title(child).starts_with(titleBegin))
                found.push_back(system().screenRect(child).moved(Point{} - corner));
        return found;
    }
};

/// Position of an English label.
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

TEST(Labels, ShowAllLettersThatFitInOtherLanguages)
{
    const std::vector<Label> all = labels();
    for (uint32_t index = 1; index < Language::languages; ++index) {
        LanguageSession session(static_cast<Language::Index>(index));
        const Language language;
        ASSERT_NE(language.labelFont(), nullptr);
        const auto widthOf = [&](std::u16string_view words) {
            return session.system().measureText(*language.labelFont(), words).width;
        };
        const std::vector<Rect> places = session.windowRects("Translated text '");
        ASSERT_EQ(places.size(), all.size());
        const Bitmap shot = session.desk->shot();
        for (size_t i = 0; i < places.size(); ++i) {
            const auto &[row, field] = all[i];
            const UI::Native::TextRow &text = UI::textRow(row);
            SCOPED_TRACE(std::to_string(index) + ", " + text.english);
            EXPECT_EQ(places[i], field);
            std::u16string words = language.string(row);
            ASSERT_FALSE(words.empty());
            while (widthOf(words) > field.width()) words.pop_back();
            if (words == u" ") continue; // a neighbouring label overlaps its field
            const bool right = text.alignment == UI::Native::TextRow::right;
            Picture wanted(field.width(), field.height());
            wanted.drawGround(field);
            session.system().drawText(wanted.bitmap(), *language.labelFont(), 0,
                                      {right ? field.width() - widthOf(words) : 0, text.textInset}, words,
                                      false);
            EXPECT_TRUE(wanted.isShown(shot, field.corner()));
        }
    }
}

TEST(Labels, OfCheckBoxesTakeClicksOnTheirWordsOnly)
{
    LanguageSession session(Language::spanish);
    const Language language;
    const UI::Native::TextRow &text = UI::textRow(UI::kBandLinkLabel);
    const int32_t width =
        session.system().measureText(*language.labelFont(), language.string(UI::kBandLinkLabel)).width;
    ASSERT_LT(width + 1, text.width);
    const Point first{text.alignment == UI::Native::TextRow::right ? text.x + text.width - width : text.x,
                      text.y + 5};
    const auto linked = [&] { return session.effect.plugin().transformHandle().dynamics()->bandLink(); };
    const int32_t beside = first.x == text.x ? width : -1;
    session.desk->click(first + Point{beside, 0});
    EXPECT_FALSE(linked());
    for (const int32_t x : {0, width - 1}) {
        const bool before = linked();
        session.desk->click(first + Point{x, 0});
        EXPECT_NE(linked(), before) << x;
    }
}

// Tool tips and the focus mark.

class ToolTips : public testing::Test {
protected:
    static constexpr uint32_t kTickMs = 33;

    /// Rectangle of the tool tip; empty if there is none.
    Rect tip()
    {
        const std::vector<Rect> tips = session.windowRects("ToolTip");
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

    LanguageSession session{Language::english};
    Desk &desk = *session.desk;
};

TEST_F(ToolTips, AppearAfterTwoSecondsAndLeaveWithThePointer)
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
    EXPECT_FALSE(tip().isEmpty()) << "pointer still on the control";
    desk.moveTo(control("bypass 1").centre());
    EXPECT_TRUE(tip().isEmpty());
    desk.wait(kTickMs);
    EXPECT_TRUE(showsTip(36)) << "no delay shortly after another tip";
    desk.moveTo(nowhere);
    desk.wait(4000);
    EXPECT_TRUE(tip().isEmpty());
    desk.moveTo(solo); // long after the last tip
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

TEST_F(ToolTips, AClickHidesTheTipAndRestartsTheDelay)
{
    desk.moveTo(control("limiter bypass").centre());
    desk.wait(2050);
    EXPECT_TRUE(showsTip(44));
    EXPECT_EQ(tip().right, 546) << "moved to stay inside the window";
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
    EXPECT_FALSE(tip().isEmpty()) << "the wheel must not hide the tip";

    const Point slider = control("threshold slider 2").centre(), beneath = slider + Point{1, 25};
    desk.moveTo(slider);
    desk.wait(2050);
    ASSERT_TRUE(tip().contains(beneath));
    session.told();
    desk.click(beneath);
    EXPECT_EQ(session.told(), bracketed(11)) << "clicks on a tip go to the control underneath";
}

TEST_F(ToolTips, CursorShowsWhatCanBeDragged)
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

TEST_F(ToolTips, FocusMarkStaysForThreeSeconds)
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
    desk.type(kKeyUp); // restarts the three seconds
    desk.wait(2900);
    expectMark(true);
    desk.wait(150);
    expectMark(false);
}

} // namespace
