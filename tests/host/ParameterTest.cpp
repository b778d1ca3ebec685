#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/host/FakeHost.h"

namespace {

struct Expected {
    std::string name, label;
    float low, high, initial;
    std::string display = "False"; // default for switches
};

/// The expected parameter list in host order. "%" in a pattern is replaced by each band number.
std::vector<Expected> expectedTable()
{
    const Expected patterns[] = {{"Gain", "dB", -18, 18, 0, "0.00"},
                                 {"Crossover Low Cutoff", "Hz", 20, 20000, 120, "120.00"},
                                 {"Crossover Mid Cutoff", "Hz", 20, 20000, 2000, "2000.00"},
                                 {"Crossover High Cutoff", "Hz", 20, 20000, 10000, "10000.00"},
                                 {"Limiter Threshold", "dB", -20, 0, 0, "0.00"},
                                 {"Limiter Margin", "dB", -5, 0, 0, "0.00"},
                                 {"Limiter Attack", "ms", 1, 20, 4, "4.00"},
                                 {"Limiter Release", "ms", 10, 500, 500, "500.00"},
                                 {"Limiter Bypass", "", 0, 1, 0},
                                 {"Limiter Brickwall Mode", "", 0, 1, 0},
                                 {"Band % Comp Threshold", "dB", -60, 0, 0, "0.00"},
                                 {"Band % Gain", "dB", -18, 18, 0, "0.00"},
                                 {"Band % Ratio", "x:1", 1, 30, 1, "1.00"},
                                 {"Band % Attack", "ms", 0, 500, 10, "10.00"},
                                 {"Band % Release", "ms", 0, 5000, 100, "100.00"},
                                 {"Dynamics Band Link", "", 0, 1, 0},
                                 {"Band % Bypass", "", 0, 1, 0},
                                 {"Band % Solo", "", 0, 1, 0}};
    std::vector<Expected> table;
    for (const Expected &row : patterns) {
        const auto band = row.name.find('%');
        for (char number = '1'; number <= (band == std::string::npos ? '1' : '4'); ++number) {
            table.push_back(row);
            if (band != std::string::npos) table.back().name[band] = number;
        }
    }
    return table;
}

struct HostParameterList : testing::Test {
    FakeHost host;
    LoadedEffect effect;

    const HostParam &row(int32_t index) const
    {
        return effect.plugin().parameters().hostRows()[static_cast<size_t>(index)];
    }
    float number(int32_t index) const { return row(index).component->floatParamValue(row(index).index); }
};

TEST_F(HostParameterList, MatchesTheTableAndScalesLinearly)
{
    const std::vector<Expected> table = expectedTable();
    ASSERT_EQ(static_cast<size_t>(effect->numParams), table.size());
    for (int32_t i = 0; i < effect->numParams; ++i) {
        const auto &[name, label, low, high, initial, display] = table[static_cast<size_t>(i)];
        SCOPED_TRACE(name);
        EXPECT_EQ(name, effect.text(effGetParamName, i));
        EXPECT_EQ(label, effect.text(effGetParamLabel, i));
        EXPECT_EQ(display, effect.text(effGetParamDisplay, i));
        EXPECT_FLOAT_EQ((initial - low) / (high - low), effect.get(i));
        for (float h : {0.0f, 1.0f, 0.5f, std::nextafter(0.5f, 0.0f), 0.123f}) {
            effect.set(i, h);
            if (row(i).kind == DSP::ParamKind::real) {
                EXPECT_EQ(static_cast<float>(low + double{h} * (high - low)), number(i));
                EXPECT_NEAR(h, effect.get(i), 1e-6);
            } else {
                EXPECT_EQ(h >= 0.5f ? 1.0f : 0.0f, effect.get(i));
                EXPECT_EQ(h >= 0.5f ? "True" : "False", effect.text(effGetParamDisplay, i));
            }
        }
        for (float garbage : {NAN, HUGE_VALF, -HUGE_VALF}) {
            effect.set(i, garbage);
            EXPECT_NEAR(row(i).kind == DSP::ParamKind::real ? 0.123f : 0.0f, effect.get(i), 1e-6);
        }
        for (float huge : {std::numeric_limits<float>::max(), std::numeric_limits<float>::lowest()}) {
            effect.set(i, huge); // overflows in the parameter's unit
            EXPECT_TRUE(std::isfinite(effect.get(i)));
        }
    }
    for (int32_t index : {39, -1, std::numeric_limits<int32_t>::min()}) {
        effect.set(index, 1.0f);
        EXPECT_EQ(0.0f, effect.get(index));
        for (int32_t opcode : {effGetParamName, effGetParamLabel, effGetParamDisplay})
            EXPECT_EQ(LoadedEffect::kUntouched, effect.text(opcode, index));
    }
}

TEST(ParameterNames, AreShortForTheHostThatTruncatesThem)
{
    FakeHost host;
    for (const auto &[product, name] :
         {std::pair("Live", "Band 1 Comp Thr"), {"Live 2", "Band 1 Comp Threshold"}}) {
        host.product = product;
        EXPECT_EQ(name, LoadedEffect().text(effGetParamName, 10));
    }
}

TEST_F(HostParameterList, RefreshesTheEditorOnlyWhenAValueChanges)
{
    RecordingWindow window(effect.plugin());
    effect.set(0, 0.5f); // unchanged
    effect.set(8, 0.2f);
    EXPECT_TRUE(window.codes.empty());
    effect.set(0, 0.75f);
    effect.set(8, 0.8f); // no second request before the first is served
    EXPECT_EQ(std::vector<uint32_t>{DSP::PluginLink::refreshControls}, window.codes);
}

} // namespace
