#include <gtest/gtest.h>

#include "tests/plugin/TestPlugin.h"
#include "tests/signals/Compare.h"

namespace {

TEST(PluginBypass, FollowsThePresetChangeMode)
{
    const Audio audio = Signals::noise(1, 3000, 0), silence = Signals::silence(3000);
    for (bool bypass : {false, true})
        for (uint32_t mode : {0u, 1u, 2u, 3u}) {
            TestPlugin plugin({}, 44100), fresh({}, 44100);
            DSP::Global &global = *plugin.transformHandle().global();
            global.setPresetChangeMode(mode);
            global.setBypass(bypass);
            plugin.setPresetChanging(true);
            const Audio expected = mode == 1 ? audio : mode == 2 ? silence : fresh.process(audio);
            EXPECT_EQ(plugin.process(audio), expected) << "mode " << mode << ", bypass " << bypass;
            const Audio left = Signals::mono(audio);
            EXPECT_EQ(plugin.process(left).frames(), 3000u);
        }
}

TEST(PluginLatency, FollowsTheRateAndIsReported)
{
    TestPlugin plugin;
    EXPECT_EQ(plugin.latency(), 305u) << "before the first resume";
    const int atStart = plugin.latencyReports;
    plugin.resume(48000);
    EXPECT_EQ(plugin.latency(), 309u);
    EXPECT_EQ(plugin.latencyReports, atStart + 1);
    plugin.requestLatencyUpdate();
    EXPECT_EQ(plugin.latencyReports, atStart + 2) << "reported at once, as no block is being processed";
    plugin.setPresetChanging(true);
    plugin.transformHandle().global()->setMeterEnable(false);
    EXPECT_EQ(plugin.latencyReports, atStart + 2) << "ignored during a program change";
    plugin.setPresetChanging(false);
    const int compensations = plugin.compensationReports;
    plugin.transformHandle().global()->setDelayCompensation(false);
    plugin.transformHandle().global()->setDelayCompensation(false);
    EXPECT_EQ(plugin.compensationReports, compensations + 1);
    plugin.resume(1);
    EXPECT_EQ(plugin.latency(), 262u);
    plugin.resume(192000);
    EXPECT_EQ(plugin.latency(), 262u + 191);
}

TEST(PluginState, RestoringReportsChangedParameters)
{
    TestPlugin plugin;
    const TransformHandle &chain = plugin.transformHandle();
    const Plugin::StateImage before = plugin.captureState();
    chain.gain()->setGain(3);
    chain.maximizer()->setBrickwall(true);
    EXPECT_TRUE(plugin.restoreState(before, true));
    EXPECT_EQ(plugin.parameterReports, 2);
    EXPECT_EQ(plugin.captureState(), before);
}

TEST(PluginEdits, MarkTheParameterAndReportItsValue)
{
    using enum Plugin::EditPhase;
    TestPlugin plugin;
    DSP::Component *const gain = plugin.transformHandle().gain();
    const DSP::ParameterAddress parameter{gain, DSP::ParamKind::real, DSP::Gain::Param::gain};
    plugin.editParameter(parameter, begin, 0.0f);
    EXPECT_TRUE(parameter.record().editing);
    const float db = 3;
    plugin.editParameter(parameter.kind, value, gain, parameter.index, &db, nullptr, nullptr);
    EXPECT_EQ(plugin.lastReported, DSP::ParameterValue(3.0f));
    plugin.editParameter(parameter.kind, end, gain, parameter.index, nullptr, nullptr, nullptr);
    EXPECT_FALSE(parameter.record().editing);
    EXPECT_EQ(plugin.parameterReports, 3);
    plugin.editParameter(static_cast<DSP::ParamKind>(7), begin, gain, 0, &db, nullptr, nullptr);
    EXPECT_EQ(plugin.parameterReports, 3) << "unknown kind";
}

TEST(PluginMessages, NeedAWindowAndPostOneRefreshUntilServed)
{
    using Link = DSP::PluginLink;
    TestPlugin plugin;
    plugin.requestRefresh();
    TestWindow window;
    plugin.setEditorWindow(&window);
    for (int i = 0; i < 10; ++i) plugin.requestRefresh();
    EXPECT_EQ(window.codes, (std::vector<uint32_t>{Link::refreshControls}));
    plugin.refreshServed();
    plugin.requestRefresh();
    EXPECT_EQ(window.codes.size(), 2u);

    window.codes.clear();
    plugin.resume(48000);
    plugin.resume(48000);
    plugin.suspend();
    EXPECT_EQ(window.codes, (std::vector<uint32_t>{Link::playingStarted, Link::sampleRateChanged,
                                                   Link::playingStarted, Link::playingStopped}));
    EXPECT_FALSE(plugin.isActive());
    plugin.setEditorWindow(nullptr);
    plugin.suspend();
    EXPECT_EQ(window.codes.size(), 4u);
    plugin.setEditorWindow(&window);
    plugin.requestRefresh();
    EXPECT_EQ(window.codes.size(), 5u) << "an unserved refresh of the old window must not block this one";
}

} // namespace
