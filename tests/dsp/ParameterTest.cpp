#include <gtest/gtest.h>

#include "dsp/chain/Transform.h"
#include "tests/dsp/FakePlugin.h"

namespace {

using DSP::Component;

class Parameters : public testing::Test {
protected:
    FakePlugin plugin;
    DSP::Transform chain{plugin};
};

/// Bounds and midpoint of a real parameter, all values of other kinds.
std::vector<DSP::ParameterValue> someValues(const DSP::ParamRecord &record)
{
    const double low = DSP::toNumber(record.range.minimum), high = DSP::toNumber(record.range.maximum);
    EXPECT_LT(low, high);
    if (record.kind() == DSP::ParamKind::real)
        return {record.range.minimum, record.range.maximum, record.fromShare(0.5)};
    EXPECT_TRUE(record.kind() == DSP::ParamKind::boolean || record.hasValueNames());
    std::vector<DSP::ParameterValue> all;
    for (double each = low; each <= high; ++each) all.push_back(DSP::fromNumber(record.kind(), each));
    return all;
}

TEST_F(Parameters, StartAtTheirDefaultsAndStoreEveryValue)
{
    chain.global()->setDelayCompensation(false); // restore the default: the chain's constructor turns it on
    for (Component *component : plugin.components)
        for (const DSP::ParamKind kind : DSP::kParamLists)
            for (uint32_t i = 0; i < component->numParams(kind); ++i) {
                const DSP::ParamRecord &record = component->param(kind, i);
                SCOPED_TRACE(record.name.c_str());
                EXPECT_EQ(component->paramValue(kind, i), record.defaultValue);
                for (const DSP::ParameterValue &value : someValues(record)) {
                    component->setParamValue(kind, i, value);
                    EXPECT_EQ(component->paramValue(kind, i), value);
                    EXPECT_FALSE(component->setParamValue(kind, i, value)) << "value unchanged";
                }
            }
}

TEST_F(Parameters, StayInTheirRanges)
{
    for (const auto &[wanted, stored] : {std::pair{24.0f, 18.0f}, {-30.0f, -18.0f}}) {
        chain.gain()->setGain(wanted);
        EXPECT_EQ(chain.gain()->gain(), stored);
    }
}

TEST_F(Parameters, OptionsRequestTheUpdatesThatTheyNeed)
{
    using enum DSP::PluginLink::Message;
    DSP::Global &global = *chain.global();
    plugin.messages.clear();
    global.setFps(30);
    EXPECT_TRUE(plugin.messages.empty()) << "value unchanged";
    global.setFps(60);
    EXPECT_EQ(global.getFramePeriodMs(), 17u);
    global.setShowBackgroundGrid(false);
    global.setRenderingThread(true);
    EXPECT_EQ(plugin.messages,
              (std::vector<uint32_t>{renderTimingChanged, backgroundGridChanged, renderTimingChanged}));
    global.setFps(25);
    EXPECT_EQ(plugin.messages.size(), 3u) << "the rendering thread needs no message";

    global.setAutomationZipperSamples(5);
    EXPECT_EQ(global.getAutomationZipperSamples(), 10);
    global.setAutomationZipperSamples(1000);
    EXPECT_EQ(global.getAutomationZipperSamples(), 600);
    global.setMeterEnable(false);
    EXPECT_EQ(plugin.activeRequests, 1);

    const int resets = plugin.chainResets;
    global.setBypass(true);
    global.setBypass(true);
    global.setBypass(false);
    EXPECT_EQ(plugin.chainResets, resets + 1) << "only enabling the bypass resets the chain";
}

} // namespace
