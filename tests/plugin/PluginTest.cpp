#include <gtest/gtest.h>

#include "tests/plugin/TestPlugin.h"
#include "tests/signals/Compare.h"

namespace {

using Signals::slice;

TEST(PluginBypass, PassesTheInputAndForgetsTheSound)
{
    TestPlugin plugin({}, 44100), fresh({}, 44100);
    const Audio audio = Signals::noise(1, 3000, 6);
    plugin.process(audio);
    plugin.transformHandle().global()->setBypass(true);
    EXPECT_EQ(plugin.process(audio), audio);
    EXPECT_EQ(plugin.latency(), 305u) << "stays reported";
    plugin.transformHandle().global()->setBypass(false);
    EXPECT_EQ(plugin.process(audio), fresh.process(audio));
}

TEST(PluginBypass, IsWhatTheModeOfPresetChangesSays)
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

TEST(PluginMono, FoldsTwoChannelsAndStartsAnew)
{
    TestPlugin plugin({}, 44100), mono({}, 44100);
    Audio audio = Signals::music(1, 44100, 10000, -6);
    plugin.process(audio);
    plugin.transformHandle().global()->setProcessAsMono(true);
    const Audio folded = plugin.process(audio);
    EXPECT_EQ(folded.left, folded.right);
    Audio middle = Signals::mono(audio);
    for (uint32_t i = 0; i < 10000; ++i) middle.left[i] = (audio.left[i] + audio.right[i]) * 0.5f;
    EXPECT_EQ(folded.left, mono.process(middle).left);

    TestPlugin narrow({}, 44100), plain({}, 44100);
    narrow.process(middle);
    plain.process(middle);
    narrow.transformHandle().global()->setProcessAsMono(true);
    EXPECT_EQ(narrow.process(middle), plain.process(middle)) << "a mono host hears no change";
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
    EXPECT_EQ(plugin.latencyReports, atStart + 2) << "at once, as no block runs";
    const int compensations = plugin.compensationReports;
    plugin.transformHandle().global()->setDelayCompensation(false);
    plugin.transformHandle().global()->setDelayCompensation(false);
    EXPECT_EQ(plugin.compensationReports, compensations + 1);
    for (uint32_t rate : {0u, 1u, 499u, 500u}) {
        plugin.resume(rate);
        EXPECT_EQ(plugin.latency(), 262u);
    }
    plugin.resume(192000);
    EXPECT_EQ(plugin.latency(), 262u + 191);
}

TEST(PluginLatency, TheOldLookAheadStaysUntilTheSecondResume)
{
    for (bool again : {false, true}) {
        TestPlugin plugin;
        plugin.transformHandle().maximizer()->setBypass(true);
        plugin.resume(96000);
        if (again) plugin.resume(96000);
        Audio impulse = Signals::silence(1000);
        impulse.left[0] = 1;
        const Audio output = plugin.process(impulse);
        const auto first =
            std::find_if(output.left.begin(), output.left.end(), [](float x) { return x > 1e-3f; });
        EXPECT_EQ(first - output.left.begin(), 262 + (again ? 95 : 43));
    }
}

TEST(PluginMessages, AreNothingWithoutAWindowAndOneRefreshUntilServed)
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
}

TEST(PluginEdits, MarkTheParameterAndReachTheHost)
{
    using enum Plugin::EditPhase;
    TestPlugin plugin;
    DSP::Gain *const gain = plugin.transformHandle().gain();
    const auto edit = [&](Plugin::EditPhase phase) {
        const float value = 3;
        plugin.editParameter(DSP::ParamKind::real, phase, gain, 0, &value, nullptr, nullptr);
        return gain->floatParamEditing(0);
    };
    EXPECT_TRUE(edit(begin));
    EXPECT_TRUE(edit(value));
    EXPECT_FALSE(edit(end));
    EXPECT_EQ(plugin.phases, (std::vector<Plugin::EditPhase>{begin, value, end}));
}

TEST(PluginMeters, FollowTheOption)
{
    TestPlugin plugin;
    plugin.transformHandle().global()->setMeterEnable(false);
    EXPECT_EQ(plugin.latency(), 305u);
    const Audio audio = Signals::noise(1, 2000, 0);
    TestPlugin other;
    plugin.resume(44100);
    other.resume(44100);
    EXPECT_EQ(plugin.process(audio), other.process(audio)) << "meters are no part of the sound";
}

} // namespace
