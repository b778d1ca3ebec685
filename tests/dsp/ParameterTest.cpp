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

TEST_F(Parameters, MatchTheirNamedIndices)
{
    using DSP::CrossOver, DSP::Dynamics, DSP::Gain, DSP::Maximizer, DSP::Meter::Spectrum, DSP::ParamKind;
    struct Row {
        const Component &component;
        ParamKind kind;
        uint32_t index;
        const char *name; // for band parameters that of band 1
    };
    const Component &bands = *chain.dynamics(), &limiter = *chain.maximizer(), &spectrum = *chain.spectrum(0);
    const Row rows[] = {
        {*chain.gain(), ParamKind::real, Gain::Param::gain, "Gain"},
        {*chain.crossOver(), ParamKind::real, CrossOver::Param::cutoff, "Crossover Low Cutoff"},
        {*chain.crossOver(), ParamKind::boolean, CrossOver::Param::bandBypass, "Crossover Band 1 Bypass"},
        {*chain.crossOver(), ParamKind::boolean, CrossOver::Param::bandMute, "Crossover Band 1 Mute"},
        {limiter, ParamKind::real, Maximizer::Param::threshold, "Limiter Threshold"},
        {limiter, ParamKind::real, Maximizer::Param::margin, "Limiter Margin"},
        {limiter, ParamKind::real, Maximizer::Param::ratio, "Limiter Ratio"},
        {limiter, ParamKind::real, Maximizer::Param::attack, "Limiter Attack"},
        {limiter, ParamKind::real, Maximizer::Param::release, "Limiter Release"},
        {limiter, ParamKind::boolean, Maximizer::Param::bypass, "Limiter Bypass"},
        {limiter, ParamKind::boolean, Maximizer::Param::brickwall, "Limiter Brickwall Mode"},
        {bands, ParamKind::real, Dynamics::Param::threshold, "Band 1 Comp Threshold"},
        {bands, ParamKind::real, Dynamics::Param::gain, "Band 1 Gain"},
        {bands, ParamKind::real, Dynamics::Param::ratio, "Band 1 Ratio"},
        {bands, ParamKind::real, Dynamics::Param::attack, "Band 1 Attack"},
        {bands, ParamKind::real, Dynamics::Param::release, "Band 1 Release"},
        {bands, ParamKind::boolean, Dynamics::Param::bandLink, "Dynamics Band Link"},
        {bands, ParamKind::boolean, Dynamics::Param::bypass, "Band 1 Bypass"},
        {bands, ParamKind::boolean, Dynamics::Param::solo, "Band 1 Solo"},
        {spectrum, ParamKind::boolean, Spectrum::Param::onInput, "Spectrum On Input"},
        {spectrum, ParamKind::integer, Spectrum::Param::windowSize, "Spectrum Window Size"},
        {spectrum, ParamKind::integer, Spectrum::Param::overlap, "Spectrum Overlap"},
        {spectrum, ParamKind::integer, Spectrum::Param::windowType, "Spectrum Window Type"}};
    for (const Row &row : rows) EXPECT_EQ(row.name, row.component.param(row.kind, row.index).name);
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
