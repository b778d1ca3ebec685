#include <gtest/gtest.h>

#include <cstring>
#include <limits>

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
    EXPECT_EQ(0, std::memcmp(&effect->uniqueID, "trlQ", 4));
    EXPECT_EQ(1020, effect->version);
    EXPECT_EQ(1, effect->numPrograms);
    EXPECT_EQ(39, effect->numParams);
    EXPECT_EQ(2, effect->numInputs);
    EXPECT_EQ(2, effect->numOutputs);
    EXPECT_EQ(305, effect->initialDelay);
    EXPECT_EQ(effFlagsCanMono | effFlagsCanReplacing | effFlagsProgramChunks | effFlagsNoSoundInStop, effect->flags);

    EXPECT_EQ("Tessarine", effect.text(effGetEffectName));
    EXPECT_EQ("Veloxon, Inc.", effect.text(effGetVendorString));
    EXPECT_EQ("Tessarine", effect.text(effGetProductString));
    EXPECT_EQ(1020, effect.dispatch(effGetVendorVersion));
    EXPECT_EQ(kPlugCategEffect, effect.dispatch(effGetPlugCategory));
    EXPECT_EQ(1, effect.dispatch(effGetTailSize));
    EXPECT_EQ(0, effect.dispatch(effKeysRequired));
    EXPECT_EQ(2300, effect.dispatch(effGetVstVersion));
}

TEST(Entry, SaysWhatItCanDo)
{
    const std::map<std::string, intptr_t> answers = {
        {"sendVstEvents", -1},
        {"sendVstMidiEvent", -1},
        {"sendVstTimeInfo", -1},
        {"receiveVstEvents", -1},
        {"receiveVstMidiEvent", -1},
        {"receiveVstTimeInfo", -1},
        {"offline", -1},
        {"plugAsChannelInsert", 1},
        {"plugAsSend", 1},
        {"mixDryWet", 1},
        {"noRealTime", -1},
        {"multipass", -1},
        {"metapass", -1},
        {"1in1out", 1},
        {"1in2out", -1},
        {"2in1out", -1},
        {"2in2out", 1},
        {"2in4out", -1},
        {"4in2out", -1},
        {"4in4out", -1},
        {"4in8out", -1},
        {"8in4out", -1},
        {"8in8out", -1},
        {"midiProgramNames", 0},
        {"conformsToWindowRules", 0},
        {"bypass", 0},
        {"", 0},
        {"2IN2OUT", 0},
    };
    FakeHost host;
    const LoadedEffect effect;
    for (const auto &[question, answer] : answers)
        EXPECT_EQ(answer, effect.dispatch(effCanDo, 0, 0, const_cast<char *>(question.c_str()))) << question;
}

TEST(Entry, KeepsInstancesApart)
{
    FakeHost host;
    const LoadedEffect first;
    {
        const LoadedEffect second;
        second.set(0, 1.0f);
        second.switchOn();
    }
    EXPECT_EQ(0.5f, first.get(0));
    EXPECT_FALSE(first.plugin().isActive());
}

/// Every opcode there is and many there are not, with arguments that no host should send.
TEST(Dispatcher, SurvivesWildCalls)
{
    FakeHost host;
    const LoadedEffect effect;
    std::vector<int32_t> opcodes = {std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max(),
                                    1000};
    for (int32_t opcode = -5; opcode <= 100; ++opcode)
        if (opcode != effClose) opcodes.push_back(opcode);
    constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();

    alignas(16) char room[4096] = {};
    for (int32_t opcode : opcodes)
        for (int32_t index : {0, -1, 39, kMost, -kMost - 1})
            for (intptr_t value : {0, 1, -1, kMost})
                for (void *ptr : {static_cast<void *>(nullptr), static_cast<void *>(room)})
                    for (float opt : {0.0f, -1.0f, kInfinity, std::numeric_limits<float>::quiet_NaN(), 1e30f})
                        effect.dispatch(opcode, index, value, ptr, opt);

    EXPECT_EQ(44100.0f, effect.plugin().getSampleRate()) << "none of those rates is one";
    EXPECT_EQ(0, effect.dispatch(effGetProgram));
    EXPECT_EQ(0.5f, effect.get(0));
}

TEST(Dispatcher, WritesNothingForIndicesBeyondTheTable)
{
    FakeHost host;
    const LoadedEffect effect;
    for (int32_t index : {39, -1, 1000000})
        for (int32_t opcode : {effGetParamName, effGetParamLabel, effGetParamDisplay})
            EXPECT_EQ(LoadedEffect::kUntouched, effect.text(opcode, index)) << opcode << " of " << index;
}

} // namespace
