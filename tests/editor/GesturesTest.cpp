#include <cmath>

#include "tests/editor/Session.h"

// What a person does with mouse, wheel and keyboard on each slider and field, and what comes of it: the value,
// what the host is told, what is drawn.

namespace {

using namespace Platform;

constexpr float kGapOctaves = 10.0f / 377.0f * 9.9657843f; // between two cutoffs: ten pixels

std::string bracketed(int32_t host)
{
    const std::string n = std::to_string(host);
    return "b" + n + " v" + n + " e" + n;
}

std::string shownNumber(float v)
{
    char text[32];
    std::snprintf(text, sizeof text, v > -100.0f && v < 100.0f ? "%.1f" : "%.0f", static_cast<double>(v));
    return std::string(text) == "-0.0" ? "0.0" : text;
}

/// One of each kind, and of each kind of scale.
const char *const kKinds[] = {"output slider", "threshold slider 3", "output gain", "mid cutoff",
                              "gain 2",        "release 4"};

class GesturesTest : public testing::Test {
protected:
    /// Every value somewhere inside its range.
    void prepare()
    {
        const float cutoffs[] = {150.0f, 1500.0f, 9000.0f};
        for (int32_t host = 0; host < 30; ++host) {
            if (host == 8 || host == 9) continue; // switches
            const DSP::FloatRange bounds = session.range(host);
            const bool cutoff = host >= 1 && host <= 3;
            const float share =
                cutoff ? (cutoffs[host - 1] - bounds.minimum) / (bounds.maximum - bounds.minimum) : 0.4f;
            session.effect.set(host, share);
        }
        desk.wait(0);
        session.told();
    }

    /// A step of a field's own scale, where it has one.
    float scaled(const ControlRow &row, float from, float step) const
    {
        if (row.isCutoff()) return from * std::pow(1000.0f, step / 37.7f);
        if (row.isBandRelease()) return (from + 1.0f) * std::pow(5001.0f, step / 100.0f) - 1.0f;
        return from + step;
    }

    /// Where a value ends that is sent beyond what it may be.
    float limited(const ControlRow &row, float wanted) const
    {
        DSP::FloatRange bounds = session.range(row.host);
        if (row.isCutoff() && row.host > 1)
            bounds.minimum = session.value(row.host - 1) * std::exp2(kGapOctaves);
        if (row.isCutoff() && row.host < 3)
            bounds.maximum = session.value(row.host + 1) / std::exp2(kGapOctaves);
        return std::clamp(wanted, bounds.minimum, bounds.maximum);
    }

    void expectResult(const ControlRow &row, float wanted, const std::string &told)
    {
        const float tolerance = 2e-4f * std::max(1.0f, std::abs(wanted));
        EXPECT_EQ(session.told(), told);
        EXPECT_NEAR(session.value(row.host), wanted, tolerance);
        EXPECT_NEAR(session.lastTold(row.host), session.value(row.host), tolerance) << "told";
        EXPECT_FALSE(session.editing(row.host));
        expectShown(row);
    }

    void expectShown(const ControlRow &row)
    {
        if (row.isSlider()) {
            EXPECT_TRUE(session.showsSlider(row));
        } else {
            EXPECT_TRUE(session.showsField(row, shownNumber(session.value(row.host))));
        }
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(GesturesTest, WheelAndKeysStep)
{
    struct Step {
        const char *what;
        std::initializer_list<uint32_t> held;
        int32_t wheel; // else a key
        uint32_t key;
        float slider, field;
    };
    constexpr float kFar = 1e6f;
    const Step steps[] = {{"wheel", {}, 120, 0, 1.0f, 1.0f},
                          {"wheel back, coarse", {kKeyShift}, -120, 0, -10.0f, -5.0f},
                          {"wheel, fine", {kKeyControl}, 240, 0, 0.2f, 0.2f},
                          {"down, coarse", {kKeyShift}, 0, kKeyDown, -10.0f, -10.0f},
                          {"right, to step instead of moving", {kKeyAlt}, 0, kKeyRight, 1.0f, 1.0f},
                          {"page down, fine", {kKeyControl}, 0, kKeyPageDown, -0.3f, -1.0f},
                          {"end", {}, 0, kKeyEnd, kFar, kFar},
                          {"home", {}, 0, kKeyHome, -kFar, -kFar}};
    for (const char *kind : kKinds) {
        const ControlRow &row = control(kind);
        for (const Step &step : steps) {
            SCOPED_TRACE(row.name + ", " + step.what);
            prepare();
            const float from = session.value(row.host);
            float wanted = from + (row.isSlider() ? step.slider : step.field);
            if (step.wheel != 0 && (row.isCutoff() || row.isBandRelease()))
                wanted = scaled(row, from, step.field * 0.0265252f);
            session.window(row).setFocus();
            desk.moveTo(row.centre());
            const Held keys(desk, step.held);
            if (step.wheel != 0)
                desk.wheel(step.wheel);
            else
                desk.type(step.key);
            expectResult(row, limited(row, wanted), bracketed(row.host));
            EXPECT_TRUE(session.mainWindow().showsFocus() || step.wheel != 0);
        }
    }
    desk.moveTo({545, 486}); // on nothing: consumed without effect
    desk.wheel(120);
    EXPECT_EQ(session.told(), "");
}

TEST_F(GesturesTest, DragsAreOneGesture)
{
    struct Drag {
        const char *what;
        std::initializer_list<uint32_t> held;
        float field; // the step of ten pixels
    };
    const Drag drags[] = {
        {"plain", {}, 1.0f}, {"coarse", {kKeyShift}, 10.0f}, {"fine", {kKeyControl}, 0.025f}};
    for (const char *kind : kKinds) {
        const ControlRow &row = control(kind);
        for (const Drag &drag : drags) {
            SCOPED_TRACE(row.name + ", " + drag.what);
            prepare();
            const Held keys(desk, drag.held);
            const float before = session.value(row.host);
            Point from = row.centre();
            float wanted = scaled(row, before, drag.field);
            if (row.isSlider()) {
                const DSP::FloatRange bounds = session.range(row.host);
                const float travel = static_cast<float>(row.place().height() - 13);
                const float units = (bounds.maximum - bounds.minimum) / travel;
                const float pixel = std::round((bounds.maximum - before) / units);
                from.y = row.corner.y + static_cast<int32_t>(pixel) + 6; // on the handle
                wanted = bounds.maximum - (pixel - 7) * units;
                if (drag.field < 1.0f) wanted = before + 7 * 0.025f;
            }
            const Point to = from + Point{3, -7};
            desk.moveTo(from);
            desk.press();
            const std::string n = std::to_string(row.host);
            EXPECT_EQ(session.told(), "b" + n);
            EXPECT_TRUE(session.editing(row.host));
            desk.moveTo(to);
            EXPECT_EQ(session.told(), "v" + n);
            if (row.isField()) { // the pointer is held where it was pressed
                EXPECT_EQ(windowSystem().pointer(), windowSystem().toScreen(desk.window(), from));
            }
            const float dragged = session.lastTold(row.host);
            desk.release();
            EXPECT_EQ(session.told(), "e" + n);
            EXPECT_FALSE(session.editing(row.host));
            EXPECT_NEAR(session.value(row.host), limited(row, wanted),
                        2e-4f * std::max(1.0f, std::abs(wanted)));
            EXPECT_NEAR(dragged, session.value(row.host), 2e-4f * std::max(1.0f, std::abs(wanted)));
            EXPECT_EQ(session.focused(), &row);
            expectShown(row);
            desk.moveTo(to + Point{0, -20});
            EXPECT_EQ(session.told(), "") << "released";
        }
    }
}

TEST_F(GesturesTest, FieldsAreDraggedWithoutEnd)
{
    const ControlRow &row = control("output gain");
    desk.moveTo(row.centre());
    desk.press();
    for (int i = 0; i < 12; ++i) desk.moveTo(row.centre() + Point{0, -14});
    EXPECT_NEAR(session.value(0), 16.8f, 1e-3f);
    desk.release();
    EXPECT_TRUE(session.showsField(row, "16.8"));
    EXPECT_TRUE(session.showsSlider(control("output slider"))) << "shows the same parameter";
}

TEST_F(GesturesTest, TheHandleJumpsUnderThePointer)
{
    const ControlRow &row = control("output slider"); // 36 dB on 146 pixels
    desk.moveTo({row.corner.x + 5, row.corner.y + 26});
    desk.press();
    EXPECT_EQ(session.told(), "b0 v0");
    EXPECT_NEAR(session.value(0), 18.0f - 20.0f * 36.0f / 146.0f, 1e-4f);
    desk.moveTo({row.corner.x + 5, row.corner.y + 26 + 10});
    EXPECT_NEAR(session.value(0), 18.0f - 30.0f * 36.0f / 146.0f, 1e-4f);
    desk.moveTo({row.corner.x - 300, -200});
    EXPECT_NEAR(session.value(0), 18.0f, 0.0f);
    desk.release();
    EXPECT_EQ(session.told(), "v0 e0");
    EXPECT_TRUE(session.showsSlider(row));
    EXPECT_TRUE(session.showsField(control("output gain"), "18.0"));
    desk.click({row.corner.x + 5, row.corner.y + 158}); // below the last place of the handle
    EXPECT_NEAR(session.value(0), -18.0f, 0.0f);
    EXPECT_EQ(session.told(), bracketed(0));
    desk.moveTo(row.corner + Point{5, 40});
    desk.doubleClick();
    EXPECT_NEAR(session.value(0), 0.0f, 0.0f);
    EXPECT_EQ(session.told(), "b0 v0 e0 b0 v0 e0");
}

TEST_F(GesturesTest, AltResets)
{
    for (const char *kind : kKinds) {
        const ControlRow &row = control(kind);
        SCOPED_TRACE(row.name);
        prepare();
        desk.moveTo(row.centre());
        {
            const Held keys(desk, {kKeyAlt});
            desk.press();
            expectResult(row, session.defaultValue(row.host), bracketed(row.host));
        }
        desk.moveTo(row.centre() + Point{0, 9}); // nothing is held
        desk.release();
        EXPECT_EQ(session.told(), "");
    }
}

TEST_F(GesturesTest, NumbersAreTyped)
{
    struct Field {
        const char *name, *number;
        float value;
    };
    // One that the window carries out, one of a group and one that works by itself: boxes take their time.
    const Field fields[] = {{"mid cutoff", "1687.5dB", 1687.5f},
                            {"release 1", "2000.25", 2000.25f},
                            {"limiter margin", "-2,75dB", -2.75f}};
    for (const auto &[name, number, value] : fields) {
        const ControlRow &row = control(name);
        const DSP::FloatRange bounds = session.range(row.host);
        prepare();
        const std::tuple<const char *, bool, float> cases[] = {
            {number, true, value}, {number, false, NAN}, {"999999", true, limited(row, bounds.maximum)},
            {"abc", true, NAN},    {"1.2.3", true, NAN}, {"-999999", true, limited(row, bounds.minimum)},
            {"-", true, NAN}}; // no number: no change
        for (const auto &[text, confirmed, typed] : cases) {
            SCOPED_TRACE(row.name + ", " + text);
            prepare();
            const float wanted = std::isnan(typed) ? session.value(row.host) : typed;
            desk.answerPrompt(text, confirmed);
            desk.click(row.centre());
            const std::string n = std::to_string(row.host);
            const std::string change = std::isnan(typed) ? "" : " " + bracketed(row.host);
            EXPECT_EQ(session.told(), "b" + n + " e" + n + change);
            EXPECT_NEAR(session.value(row.host), wanted, 1e-3f * std::max(1.0f, std::abs(wanted)));
            EXPECT_EQ(session.focused(), &row);
            expectShown(row);
        }
    }
    const ControlRow &ratio = control("ratio 2");
    session.window(ratio).setFocus();
    session.told();
    desk.answerPrompt("3", true);
    desk.type(kKeyF2);
    EXPECT_EQ(session.told(), bracketed(ratio.host));
    EXPECT_FLOAT_EQ(session.value(ratio.host), 3.0f);
}

TEST_F(GesturesTest, NumbersAreShownInFullAndWithoutMinusZero)
{
    const ControlRow &cutoff = control("low cutoff"), &gain = control("output gain"),
                     &attack = control("attack 1");
    session.put(cutoff.host, 1000.0f);
    EXPECT_TRUE(session.showsField(cutoff, "1000"));
    session.put(gain.host, -0.04f);
    EXPECT_TRUE(session.showsField(gain, "0.0"));
    session.put(attack.host, 100.0f);
    EXPECT_TRUE(session.showsField(attack, "100"));
    session.put(attack.host, 99.96f);
    EXPECT_TRUE(session.showsField(attack, "100.0"));
}

TEST_F(GesturesTest, EachControlMovesItsParameterOnce)
{
    prepare();
    session.host.echoesAutomation = true; // sets what it is told, which ends the talk
    for (const ControlRow &row : controlTable()) {
        if (row.isButton()) continue;
        SCOPED_TRACE(row.name);
        const float before = session.value(row.host);
        desk.moveTo(row.centre());
        desk.wheel(120);
        desk.wait(0);
        EXPECT_EQ(session.takeEdits().size(), 3u);
        EXPECT_GT(session.value(row.host), before);
        expectShown(row);
    }
}

// Focus.

TEST_F(GesturesTest, TabWalksOverAllControls)
{
    const auto &table = controlTable();
    ASSERT_EQ(session.controls().size(), 45u);
    for (const ControlRow &row : table) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(session.window(row).frameRect(), row.place());
    }
    session.window(table[0]).setFocus();
    desk.type(kKeyTab);
    EXPECT_EQ(session.focused(), &table[0]) << "the first only shows where the focus is";
    EXPECT_TRUE(session.showsSlider(table[0]));
    for (size_t i = 1; i <= table.size(); ++i) {
        desk.type(i % 2 ? kKeyTab : kKeyRight);
        ASSERT_EQ(session.focused(), &table[i % table.size()]);
    }
    for (size_t i = table.size(); i-- > 0;) {
        if (i % 2) {
            desk.type(kKeyLeft);
        } else {
            const Held keys(desk, {kKeyShift});
            desk.type(kKeyTab);
        }
        ASSERT_EQ(session.focused(), &table[i]);
    }
    session.window(table[20]).hide();
    session.window(table[19]).setFocus();
    desk.type(kKeyTab);
    EXPECT_EQ(session.focused(), &table[21]);
    EXPECT_EQ(session.told(), "");
}

} // namespace
