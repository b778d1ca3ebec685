#include "tests/editor/Session.h"

// Mouse, wheel and keyboard gestures on each slider and field: value, edits reported to the host, drawing.

namespace {

using namespace Platform;

/// One control of each kind and scale.
const char *const kKinds[] = {"output slider", "threshold slider 3", "output gain", "mid cutoff",
                              "gain 2",        "release 4"};

class Gestures : public testing::Test {
protected:
    /// Sets all values inside their ranges.
    void prepare()
    {
        for (int32_t host = 0; host < 30; ++host)
            if (host != 8 && host != 9) session.effect.set(host, 0.4f); // 8 and 9 are switches
        for (const auto &[host, hz] : {std::pair{1, 150.0f}, {2, 1500.0f}, {3, 15000.0f}})
            session.put(host, hz);
        session.told();
    }

    /// Adds `step` on the field's scale.
    static float scaled(const ControlRow &row, float from, float step)
    {
        if (row.isCutoff()) return from * std::pow(1000.0f, step / 37.7f);
        if (row.isBandRelease()) return (from + 1.0f) * std::pow(5001.0f, step / 100.0f) - 1.0f;
        return from + step;
    }

    /// Expects the value in the parameter, in the last report to the host and on the screen, and no open gesture.
    void expectResult(const ControlRow &row, float wanted, float toldLast)
    {
        const float tolerance = 2e-4f * std::max(1.0f, std::abs(wanted));
        EXPECT_NEAR(session.value(row.host), wanted, tolerance);
        EXPECT_NEAR(toldLast, session.value(row.host), tolerance) << "told";
        EXPECT_FALSE(session.editing(row.host));
        EXPECT_TRUE(session.showsValue(row));
    }

    Session session;
    Desk &desk = *session.desk;
};

TEST_F(Gestures, WheelAndKeysStepTheValue)
{
    struct Step {
        const char *what;
        std::initializer_list<uint32_t> held;
        int32_t wheel; // 0: use `key`
        uint32_t key;
        float slider, field;
    };
    const Step steps[] = {
        {"wheel", {}, 120, 0, 1.0f, 1.0f},
        {"wheel back, coarse", {kKeyShift}, -120, 0, -10.0f, -5.0f},
        {"wheel, fine", {kKeyControl}, 240, 0, 0.2f, 0.2f},
        {"down, coarse", {kKeyShift}, 0, kKeyDown, -10.0f, -10.0f},
        {"right with Alt, which steps instead of moving the focus", {kKeyAlt}, 0, kKeyRight, 1.0f, 1.0f},
        {"page down, fine", {kKeyControl}, 0, kKeyPageDown, -0.3f, -1.0f}};
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
            EXPECT_EQ(session.told(), bracketed(row.host));
            expectResult(row, wanted, session.lastTold(row.host));
            EXPECT_TRUE(session.mainWindow().showsFocus() || step.wheel != 0);
        }
    }
    desk.moveTo({545, 486}); // the wheel has no effect on the background
    desk.wheel(120);
    EXPECT_EQ(session.told(), "");
}

TEST_F(Gestures, DragsAreOneGesture)
{
    struct Drag {
        const char *what;
        std::initializer_list<uint32_t> held;
        float field; // step per ten pixels
    };
    const Drag drags[] = {
        {"plain", {}, 1.0f}, {"coarse", {kKeyShift}, 10.0f}, {"fine", {kKeyControl}, 0.025f}};
    for (const char *kind : kKinds) {
        const ControlRow &row = control(kind);
        const std::string n = std::to_string(row.host);
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
            EXPECT_EQ(session.told(), "b" + n);
            EXPECT_TRUE(session.editing(row.host));
            desk.moveTo(to);
            EXPECT_EQ(session.told(), "v" + n);
            if (row.isField()) { // the pointer returns to the pressed position
                EXPECT_EQ(windowSystem().pointer(), windowSystem().toScreen(desk.window(), from));
            }
            const float dragged = session.lastTold(row.host);
            desk.release();
            EXPECT_EQ(session.told(), "e" + n);
            expectResult(row, wanted, dragged);
            EXPECT_EQ(session.focused(), &row);
            desk.moveTo(to + Point{0, -20});
            EXPECT_EQ(session.told(), "") << "released";
        }
    }
}

TEST_F(Gestures, FieldDragsAreNotLimitedByTheScreen)
{
    const ControlRow &row = control("output gain");
    desk.moveTo(row.centre());
    desk.press();
    for (int i = 0; i < 12; ++i) desk.moveTo(row.centre() + Point{0, -14});
    EXPECT_NEAR(session.value(0), 16.8f, 1e-3f);
    desk.release();
    EXPECT_TRUE(session.showsField(row, "16.8"));
    EXPECT_TRUE(session.showsValue(control("output slider"))) << "shows the same parameter";
}

TEST_F(Gestures, PressBesideTheHandleMovesItToThePointer)
{
    const ControlRow &row = control("output slider"); // 36 dB on 146 pixels
    desk.moveTo(row.corner + Point{5, 26});
    desk.press();
    EXPECT_EQ(session.told(), "b0 v0");
    EXPECT_NEAR(session.value(0), 18.0f - 20.0f * 36.0f / 146.0f, 1e-4f);
    desk.moveTo(row.corner + Point{5, 36});
    EXPECT_NEAR(session.value(0), 18.0f - 30.0f * 36.0f / 146.0f, 1e-4f);
    desk.moveTo(row.corner + Point{-300, -246});
    EXPECT_FLOAT_EQ(session.value(0), 18.0f);
    desk.release();
    EXPECT_EQ(session.told(), "v0 e0");
    EXPECT_TRUE(session.showsValue(row));
    EXPECT_TRUE(session.showsField(control("output gain"), "18.0"));
    desk.moveTo(row.corner + Point{5, 16});
    desk.press();
    desk.moveTo(row.corner + Point{5, 36});
    {
        const Held keys(desk, {kKeyControl}); // fine steps
        desk.moveTo(row.corner + Point{5, 32});
        EXPECT_NEAR(session.value(0), 18.0f - 30.0f * 36.0f / 146.0f + 4 * 0.025f, 1e-4f);
    }
    desk.release();
    session.told();
    desk.click(row.corner + Point{5, 158}); // below the lowest handle position
    EXPECT_FLOAT_EQ(session.value(0), -18.0f);
    EXPECT_EQ(session.told(), bracketed(0));
    desk.moveTo(row.corner + Point{5, 40});
    desk.doubleClick();
    EXPECT_FLOAT_EQ(session.value(0), 0.0f);
    EXPECT_EQ(session.told(), "b0 v0 e0 b0 v0 e0");
}

TEST_F(Gestures, TypedNumbersAreClampedAndInvalidOnesIgnored)
{
    struct Field {
        const char *name, *number;
        float value;
    };
    // A few fields only, as prompts are slow: a cutoff, a linkable band parameter and an independent field.
    const Field fields[] = {{"mid cutoff", "1687.5dB", 1687.5f},
                            {"release 1", "2000.25", 2000.25f},
                            {"limiter margin", "-2,75dB", -2.75f}};
    for (const auto &[name, number, value] : fields) {
        const ControlRow &row = control(name);
        const std::tuple<const char *, bool, float> cases[] = {{number, true, value},
                                                               {number, false, NAN},
                                                               {"abc", true, NAN},
                                                               {"1.2.3", true, NAN},
                                                               {"-", true, NAN}};
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
            EXPECT_TRUE(session.showsValue(row));
        }
    }
}

TEST_F(Gestures, NumbersAreRoundedWithoutNegativeZero)
{
    const std::tuple<const char *, float, const char *> rows[] = {{"low cutoff", 1000.0f, "1000"},
                                                                  {"output gain", -0.04f, "0.0"},
                                                                  {"attack 1", 100.0f, "100"},
                                                                  {"attack 1", 99.96f, "100.0"}};
    for (const auto &[name, value, text] : rows) {
        session.put(control(name).host, value);
        EXPECT_TRUE(session.showsField(control(name), text)) << text;
    }
}

TEST_F(Gestures, TabReachesAllControlsInOrder)
{
    const auto &table = controlTable();
    ASSERT_EQ(session.controls().size(), 45u);
    for (const ControlRow &row : table) EXPECT_EQ(session.window(row).frameRect(), row.place()) << row.name;
    session.window(table[0]).setFocus();
    desk.type(kKeyTab);
    EXPECT_EQ(session.focused(), &table[0]) << "the first Tab only shows the focus mark";
    EXPECT_TRUE(session.showsValue(table[0]));
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
