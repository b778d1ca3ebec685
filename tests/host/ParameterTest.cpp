#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/host/FakeHost.h"

namespace {

struct Expected {
    std::string name, label;
    float low, high, initial; // for a switch 0, 1 and its value
    std::string display;
};

std::string bandName(int band, const std::string &rest)
{
    return "Band " + std::to_string(band) + " " + rest;
}

/// What a host's parameter list shows, in its order.
std::vector<Expected> expectedTable()
{
    std::vector<Expected> table = {
        {"Gain", "dB", -18, 18, 0, "0.00"},
        {"Crossover Low Cutoff", "Hz", 20, 20000, 120, "120.00"},
        {"Crossover Mid Cutoff", "Hz", 20, 20000, 2000, "2000.00"},
        {"Crossover High Cutoff", "Hz", 20, 20000, 10000, "10000.00"},
        {"Limiter Threshold", "dB", -20, 0, 0, "0.00"},
        {"Limiter Margin", "dB", -5, 0, 0, "0.00"},
        {"Limiter Attack", "ms", 1, 20, 4, "4.00"},
        {"Limiter Release", "ms", 10, 500, 500, "500.00"},
        {"Limiter Bypass", "", 0, 1, 0, "False"},
        {"Limiter Brickwall Mode", "", 0, 1, 0, "False"},
    };
    const Expected bandNumbers[] = {
        {"Comp Threshold", "dB", -60, 0, 0, "0.00"}, {"Gain", "dB", -18, 18, 0, "0.00"},
        {"Ratio", "x:1", 1, 30, 1, "1.00"},          {"Attack", "ms", 0, 500, 10, "10.00"},
        {"Release", "ms", 0, 5000, 100, "100.00"},
    };
    const Expected bandSwitches[] = {{"Bypass", "", 0, 1, 0, "False"}, {"Solo", "", 0, 1, 0, "False"}};
    const auto addBands = [&table](const Expected &row) {
        for (int band = 1; band <= 4; ++band) {
            table.push_back(row);
            table.back().name = bandName(band, row.name);
        }
    };
    for (const Expected &row : bandNumbers) addBands(row);
    table.push_back({"Dynamics Band Link", "", 0, 1, 0, "False"});
    for (const Expected &row : bandSwitches) addBands(row);
    return table;
}

struct ParameterTest : testing::Test {
    FakeHost host;
    LoadedEffect effect;

    const HostParam &row(int32_t index) const
    {
        return effect.plugin().hostParameters()[static_cast<size_t>(index)];
    }
    bool isNumber(int32_t index) const { return row(index).kind == DSP::ParamKind::real; }
    float number(int32_t index) const { return row(index).component->floatParamValue(row(index).index); }
};

TEST_F(ParameterTest, ShowTheirNamesUnitsAndValues)
{
    const std::vector<Expected> table = expectedTable();
    ASSERT_EQ(static_cast<size_t>(effect->numParams), table.size());
    for (int32_t i = 0; i < effect->numParams; ++i) {
        const Expected &expected = table[static_cast<size_t>(i)];
        SCOPED_TRACE(expected.name);
        EXPECT_EQ(expected.name, effect.text(effGetParamName, i));
        EXPECT_EQ(expected.label, effect.text(effGetParamLabel, i));
        EXPECT_EQ(expected.display, effect.text(effGetParamDisplay, i));
        EXPECT_FLOAT_EQ((expected.initial - expected.low) / (expected.high - expected.low), effect.get(i));
    }
}

TEST_F(ParameterTest, RunLinearlyBetweenTheirBounds)
{
    const std::vector<Expected> table = expectedTable();
    for (int32_t i = 0; i < effect->numParams; ++i) {
        const Expected &expected = table[static_cast<size_t>(i)];
        SCOPED_TRACE(expected.name);
        for (float h : {0.0f, 1.0f, 0.5f, 0.123f}) {
            effect.set(i, h);
            if (isNumber(i)) {
                EXPECT_EQ(static_cast<float>(expected.low + double{h} * (expected.high - expected.low)),
                          number(i));
                EXPECT_NEAR(h, effect.get(i), 1e-6);
            } else {
                EXPECT_EQ(h >= 0.5f ? 1.0f : 0.0f, effect.get(i));
                EXPECT_EQ(h >= 0.5f ? "True" : "False", effect.text(effGetParamDisplay, i));
            }
        }
    }
    effect.set(8, std::nextafter(0.5f, 0.0f));
    EXPECT_EQ(0.0f, effect.get(8));
}

TEST_F(ParameterTest, IgnoreValuesAndIndicesThatAreNone)
{
    const float garbage[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                             -std::numeric_limits<float>::infinity()};
    for (int32_t i = 0; i < effect->numParams; ++i)
        for (float value : garbage) {
            const float before = effect.get(i);
            effect.set(i, value);
            EXPECT_EQ(before, effect.get(i)) << i;
        }
    for (int32_t index : {39, -1, std::numeric_limits<int32_t>::min()}) {
        effect.set(index, 1.0f);
        EXPECT_EQ(0.0f, effect.get(index));
    }
}

TEST(ParameterNames, AreShortForTheHostThatCutsThem)
{
    FakeHost host;
    host.product = "Live";
    {
        const LoadedEffect effect;
        EXPECT_EQ("Band 1 Comp Thr", effect.text(effGetParamName, 10));
        EXPECT_EQ("Crossover Low C", effect.text(effGetParamName, 1));
        EXPECT_EQ("Gain", effect.text(effGetParamName, 0));
    }
    host.product = "Live 2";
    const LoadedEffect effect;
    EXPECT_EQ("Band 1 Comp Threshold", effect.text(effGetParamName, 10));
}

class CountingWindow final : public EditorWindow {
public:
    void post(uint32_t code) override { codes.push_back(code); }
    std::vector<uint32_t> codes;
};

TEST_F(ParameterTest, RefreshTheEditorOnlyWhenAValueChanges)
{
    CountingWindow window;
    effect.plugin().setEditorWindow(&window);
    effect.set(0, 0.5f); // as it was
    effect.set(8, 0.2f);
    EXPECT_TRUE(window.codes.empty());
    effect.set(0, 0.75f);
    effect.set(8, 0.8f); // not served yet, so no second request
    EXPECT_EQ(std::vector<uint32_t>{DSP::PluginLink::refreshControls}, window.codes);
    effect.plugin().setEditorWindow(nullptr);
}

/// The editor's gestures as the host hears them: opcode, index and value of each call.
struct GestureTest : ParameterTest {
    using Heard = std::vector<std::tuple<int32_t, int32_t, float>>;

    void edit(Plugin::EditPhase phase, DSP::Component *component, uint32_t index, float value = 0.0f)
    {
        effect.plugin().editParameter(DSP::ParamKind::real, phase, component, index, &value, nullptr,
                                      nullptr);
    }
    Heard heard()
    {
        Heard list;
        for (const FakeHost::Call &call : host.takeCalls())
            list.emplace_back(call.opcode, call.index, call.opt);
        return list;
    }
    void SetUp() override { host.takeCalls(); }
};

TEST_F(GestureTest, BeginValueAndEndReachTheHostInOrder)
{
    DSP::Component *const gain = row(0).component;
    edit(Plugin::EditPhase::begin, gain, 0);
    edit(Plugin::EditPhase::value, gain, 0, 9.0f);
    edit(Plugin::EditPhase::value, gain, 0, -18.0f);
    edit(Plugin::EditPhase::end, gain, 0);
    EXPECT_EQ((Heard{{audioMasterBeginEdit, 0, 0.0f},
                     {audioMasterAutomate, 0, 0.75f},
                     {audioMasterAutomate, 0, 0.0f},
                     {audioMasterEndEdit, 0, 0.0f}}),
              heard());
}

TEST_F(GestureTest, ASingleValueIsBracketed)
{
    edit(Plugin::EditPhase::value, row(0).component, 0, 18.0f);
    EXPECT_EQ((Heard{{audioMasterBeginEdit, 0, 0.0f},
                     {audioMasterAutomate, 0, 1.0f},
                     {audioMasterEndEdit, 0, 0.0f}}),
              heard());

    const bool on = true;
    effect.plugin().editParameter(DSP::ParamKind::boolean, Plugin::EditPhase::value, row(38).component,
                                  row(38).index, nullptr, &on, nullptr);
    EXPECT_EQ((Heard{{audioMasterBeginEdit, 38, 0.0f},
                     {audioMasterAutomate, 38, 1.0f},
                     {audioMasterEndEdit, 38, 0.0f}}),
              heard());
}

TEST_F(GestureTest, TheHostNeverHearsOfParametersOutsideItsTable)
{
    const uint32_t limiterRatio = 2;
    for (Plugin::EditPhase phase :
         {Plugin::EditPhase::begin, Plugin::EditPhase::value, Plugin::EditPhase::end})
        edit(phase, row(6).component, limiterRatio, 3.0f);
    EXPECT_TRUE(heard().empty());
}

TEST_F(GestureTest, AHostThatEchoesTheValueChangesNothing)
{
    host.echoesAutomation = true;
    CountingWindow window;
    effect.plugin().setEditorWindow(&window);
    row(0).component->setFloatParamValue(0, 9.0f);
    edit(Plugin::EditPhase::value, row(0).component, 0, 9.0f);
    EXPECT_EQ(9.0f, number(0));
    EXPECT_TRUE(window.codes.empty());
    effect.plugin().setEditorWindow(nullptr);
}

} // namespace
