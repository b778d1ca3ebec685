#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "platform/WindowSystem.h"
#include "tests/host/FakeHost.h"

namespace {

TEST(Entry, RefusesAHostWithoutVersion)
{
    EXPECT_EQ(nullptr, VSTPluginMain(nullptr));
    FakeHost host;
    host.answers.clear(); // 0 to everything
    EXPECT_EQ(nullptr, VSTPluginMain(FakeHost::callback));
}

TEST(Entry, DescribesTheEffect)
{
    FakeHost host;
    const LoadedEffect effect;
    EXPECT_EQ(0, std::memcmp(&effect->magic, "PtsV", 4));
    EXPECT_EQ(0, std::memcmp(&effect->uniqueID, "trlQ", 4));
    EXPECT_EQ(1020, effect->version);
    EXPECT_TRUE(effect->numPrograms == 1 && effect->numInputs == 2 && effect->numOutputs == 2);
    EXPECT_EQ(effFlagsCanMono | effFlagsCanReplacing | effFlagsProgramChunks | effFlagsNoSoundInStop |
                  (Platform::hasWindowSystem() ? effFlagsHasEditor : 0),
              effect->flags);
    for (int32_t opcode : {effGetEffectName, effGetProductString})
        EXPECT_EQ("Tessarine", effect.text(opcode));
    EXPECT_EQ("Veloxon, Inc.", effect.text(effGetVendorString));
    const std::pair<int32_t, intptr_t> answers[] = {{effGetVendorVersion, 1020},
                                                    {effGetPlugCategory, kPlugCategEffect},
                                                    {effGetTailSize, 1},
                                                    {effKeysRequired, 0}};
    for (const auto &[opcode, answer] : answers) EXPECT_EQ(answer, effect.dispatch(opcode)) << opcode;

    const auto can = [&](const char *question) {
        return effect.dispatch(effCanDo, 0, 0, const_cast<char *>(question));
    };
    for (const char *yes : {"plugAsChannelInsert", "plugAsSend", "mixDryWet", "1in1out", "2in2out"})
        EXPECT_EQ(1, can(yes)) << yes;
    for (const char *no : {"sendVstEvents", "receiveVstMidiEvent", "offline", "noRealTime", "multipass",
                           "metapass", "1in2out", "2in1out", "8in8out"})
        EXPECT_EQ(-1, can(no)) << no;
    for (const char *unknown : {"midiProgramNames", "conformsToWindowRules", "bypass", "", "2IN2OUT"})
        EXPECT_EQ(0, can(unknown)) << unknown;
}

/// Every opcode there is and many there are not, with arguments that no host should send.
TEST(Dispatcher, SurvivesWildCalls)
{
    FakeHost host;
    const LoadedEffect effect;
    constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
    std::vector<int32_t> opcodes = {-kMost - 1, kMost, 1000};
    for (int32_t opcode = -5; opcode <= 100; ++opcode)
        if (opcode != effClose) opcodes.push_back(opcode);

    alignas(16) char room[4096] = {};
    for (int32_t opcode : opcodes)
        for (int32_t index : {0, -1, 39, kMost, -kMost - 1})
            for (intptr_t value :
                 {0, 1, -1, opcode == effSetChunk ? 4096 : kMost}) // a length, which must be there
                for (char *ptr : {static_cast<char *>(nullptr), room})
                    for (float opt : {0.0f, -1.0f, HUGE_VALF, NAN, 1e30f})
                        effect.dispatch(opcode, index, value, ptr, opt);

    EXPECT_EQ(44100.0f, effect.plugin().getSampleRate()) << "none of those rates is one";
    EXPECT_EQ(0, effect.dispatch(effGetProgram));
    EXPECT_EQ(0.5f, effect.get(0));
    for (int32_t index : {39, -1, 1000000})
        for (int32_t opcode : {effGetParamName, effGetParamLabel, effGetParamDisplay})
            EXPECT_EQ(LoadedEffect::kUntouched, effect.text(opcode, index)) << opcode << " of " << index;
}

} // namespace
