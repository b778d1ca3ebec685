#include <gtest/gtest.h>
#include <memory>

#include "dsp/Transform.h"
#include "tests/dsp/FakePlugin.h"

namespace {

using DSP::Component;

class Parameters : public testing::Test {
protected:
    FakePlugin plugin;
    DSP::Transform chain{plugin};
};

TEST_F(Parameters, StandInTheOrderThatStateAndHostRelyOn)
{
    struct Row {
        const char *name;
        uint32_t floats, bools, ints, automatable;
        bool active;
    };
    constexpr Row rows[] = {
        {"Global", 3, 8, 3, 0, false},         {"GlobalDerived", 0, 0, 0, 0, false},
        {"LevelMeter", 0, 0, 0, 0, true},      {"Gain", 1, 0, 0, 1, true},
        {"CrossOver", 3, 8, 0, 3, true},       {"Maximizer::Maximizer", 5, 2, 0, 6, true},
        {"Squash", 20, 9, 0, 29, true},        {"Band 1 Spectrum", 0, 1, 3, 0, true},
        {"Band 2 Spectrum", 0, 1, 3, 0, true}, {"Band 3 Spectrum", 0, 1, 3, 0, true},
        {"Band 4 Spectrum", 0, 1, 3, 0, true},
    };
    ASSERT_EQ(plugin.components.size(), std::size(rows));
    for (size_t i = 0; i < std::size(rows); ++i) {
        const Component &component = *plugin.components[i];
        SCOPED_TRACE(rows[i].name);
        EXPECT_EQ(component.componentName(), String(rows[i].name));
        EXPECT_EQ(component.numFloatParams(), rows[i].floats);
        EXPECT_EQ(component.numBoolParams(), rows[i].bools);
        EXPECT_EQ(component.numIntParams(), rows[i].ints);
        EXPECT_EQ(component.numExtraParams(), 0u);
        EXPECT_EQ(component.isActive(), rows[i].active);
        uint32_t automatable = 0;
        for (uint32_t p = 0; p < component.numFloatParams(); ++p)
            automatable += component.floatParamAutomatable(p);
        for (uint32_t p = 0; p < component.numBoolParams(); ++p)
            automatable += component.boolParamAutomatable(p);
        for (uint32_t p = 0; p < component.numIntParams(); ++p)
            automatable += component.intParamAutomatable(p);
        EXPECT_EQ(automatable, rows[i].automatable);
    }
}

TEST_F(Parameters, StartAtTheirDefaultsAndKeepWhatIsWritten)
{
    for (Component *component : plugin.components) {
        for (uint32_t i = 0; i < component->numFloatParams(); ++i) {
            SCOPED_TRACE(component->floatParamName(i).c_str());
            const auto [low, high] = component->floatParamRange(i);
            EXPECT_LT(low, high);
            EXPECT_EQ(component->floatParamValue(i), component->floatParamDefault(i));
            for (float value : {low, high, (low + high) / 2}) {
                component->setFloatParamValue(i, value);
                EXPECT_EQ(component->floatParamValue(i), value);
            }
        }
        for (uint32_t i = 0; i < component->numBoolParams(); ++i) {
            SCOPED_TRACE(component->boolParamName(i).c_str());
            const bool chainTurnsItOn = component->boolParamName(i) == String("Global: Delay Compensation");
            EXPECT_EQ(component->boolParamValue(i), component->boolParamDefault(i) || chainTurnsItOn);
            for (bool value : {true, false}) {
                component->setBoolParamValue(i, value);
                EXPECT_EQ(component->boolParamValue(i), value);
            }
        }
        for (uint32_t i = 0; i < component->numIntParams(); ++i) {
            SCOPED_TRACE(component->intParamName(i).c_str());
            const auto [low, high] = component->intParamRange(i);
            EXPECT_EQ(component->intParamValue(i), component->intParamDefault(i));
            EXPECT_TRUE(component->intParamHasValueNames(i));
            std::vector<String> names;
            component->intParamValueNames(i, names);
            EXPECT_EQ(names.size(), high - low + 1);
            for (uint32_t value = low; value <= high; ++value) {
                component->setIntParamValue(i, value);
                EXPECT_EQ(component->intParamValue(i), value);
            }
        }
    }
}

TEST_F(Parameters, StayInTheirRangesAndTakeOnlyHighlightColoursThatExist)
{
    Component &gain = *chain.gain();
    for (const auto &[wanted, stored] : {std::pair{24.0f, 18.0f}, {-30.0f, -18.0f}}) {
        gain.setFloatParamValue(0, wanted);
        EXPECT_EQ(gain.floatParamValue(0), stored);
    }
    gain.setFloatParamHighlight(0, 2);
    gain.setFloatParamHighlight(0, 5);
    EXPECT_EQ(gain.floatParamHighlight(0), 2u);
    gain.setHighlightColour(1); // no envelope: none
    EXPECT_EQ(gain.floatParamHighlight(0), DSP::kNoHighlight);
}

TEST_F(Parameters, OfTheOptionsAskForWhatTheyChange)
{
    using enum DSP::PluginLink::Message;
    DSP::Global &global = *chain.global();
    plugin.messages.clear();
    global.setFps(30);
    EXPECT_TRUE(plugin.messages.empty()) << "nothing changed";
    global.setFps(60);
    EXPECT_EQ(global.getFramePeriodMs(), 17u);
    global.setShowBackgroundGrid(false);
    global.setRenderingThread(true);
    EXPECT_EQ(plugin.messages,
              (std::vector<uint32_t>{renderTimingChanged, backgroundGridChanged, renderTimingChanged}));
    global.setFps(25);
    EXPECT_EQ(plugin.messages.size(), 3u) << "the thread reads the period itself";

    global.setAutomationZipperSamples(5);
    EXPECT_EQ(global.getAutomationZipperSamples(), 10);
    global.setAutomationZipperSamples(1000);
    EXPECT_EQ(global.getAutomationZipperSamples(), 600);
    const int before = plugin.latencyRequests;
    global.setGlobalBufferSize(9);
    EXPECT_EQ(global.getGlobalBufferSize(), 6u);
    EXPECT_EQ(plugin.latencyRequests, before + 1);
    global.setMeterEnable(false);
    EXPECT_EQ(plugin.activeRequests, 1);
    plugin.presetChanging = true;
    global.setMeterEnable(true);
    global.setGlobalBufferSize(1);
    EXPECT_EQ(plugin.activeRequests, 1) << "held back while a program is exchanged";
    EXPECT_EQ(plugin.latencyRequests, before + 1);

    const int resets = plugin.chainResets;
    global.setBypass(true);
    global.setBypass(true);
    global.setBypass(false);
    EXPECT_EQ(plugin.chainResets, resets + 1) << "only turning it on clears the sound";
}

} // namespace
