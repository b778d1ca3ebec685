#include <gtest/gtest.h>

#include <cstring>

#include "platform/WindowSystem.h"
#include "tests/host/FakeHost.h"

namespace {

/// Smallest effect that the base classes allow.
class PlainEffect final : public AudioEffectX {
public:
    explicit PlainEffect(HostCallback host) : AudioEffectX(host, 3, 5) {}
    void process(float **, float **, int32_t) override { open(); }
    void open() override
    {
        if (outOfMemory) throw std::bad_alloc();
    }

    bool outOfMemory = false;
};

struct AudioEffects : testing::Test {
    FakeHost host;
    PlainEffect effect{FakeHost::callback};
    AEffect *const record = effect.getAeffect();

    intptr_t dispatch(int32_t opcode, intptr_t value = 0, void *ptr = nullptr)
    {
        return record->dispatcher(record, opcode, 0, value, ptr, 0);
    }
};

TEST_F(AudioEffects, IgnoresSmallIntegersPassedAsPointers)
{
    SpeakerLayout *output = nullptr;
    for (const intptr_t number : {0, 8, 4088}) // some hosts pass a pin number instead of a pointer
        EXPECT_EQ(0, dispatch(effGetSpeakerArrangement, number, &output));
}

TEST_F(AudioEffects, PassesNoExceptionToTheHost)
{
    effect.outOfMemory = true;
    EXPECT_EQ(0, dispatch(effOpen));
    record->process(record, nullptr, nullptr, 1);
}

TEST_F(AudioEffects, SendsDocumentedOpcodesAndWorksWithoutAHost)
{
    static char text[65];
    const struct {
        int32_t number;
        void (*ask)(PlainEffect &asking);
    } requests[] = {{0, [](PlainEffect &asking) { asking.setParameterAutomated(0, 1.0f); }},
                    {13, [](PlainEffect &asking) { asking.ioChanged(); }},
                    {15, [](PlainEffect &asking) { asking.sizeWindow(547, 488); }},
                    {16, [](PlainEffect &asking) { asking.updateSampleRate(); }},
                    {33, [](PlainEffect &asking) { asking.getHostProductString(text); }},
                    {43, [](PlainEffect &asking) { asking.beginEdit(0); }},
                    {44, [](PlainEffect &asking) { asking.endEdit(0); }},
                    {49, [](PlainEffect &asking) { asking.getInputSpeakerArrangement(); }}};
    PlainEffect alone(nullptr);
    for (const auto &[number, ask] : requests) {
        host.takeCalls();
        ask(effect);
        const std::vector<FakeHost::Call> calls = host.takeCalls();
        ASSERT_EQ(1u, calls.size()) << number;
        EXPECT_EQ(number, calls[0].opcode);
        ask(alone);
        EXPECT_TRUE(host.takeCalls().empty());
    }
    host.connectedInputs = 1;
    EXPECT_TRUE(effect.isInputConnected(0) && !effect.isInputConnected(1) && effect.isOutputConnected(1));
    EXPECT_TRUE(alone.isInputConnected(0));
}

TEST(SpeakerArrangements, MatchingCopiesEverySpeaker)
{
    PlainEffect effect(nullptr);
    constexpr int32_t kSpeakers = 20; // more than SpeakerLayout declares
    SpeakerLayout *source = nullptr, *copy = nullptr;
    ASSERT_TRUE(effect.allocateArrangement(&source, kSpeakers));
    Speaker *const speakers = source->speakers;
    for (int32_t i = 0; i < kSpeakers; ++i) speakers[i].type = i + 1;
    ASSERT_TRUE(effect.matchArrangement(&copy, source));
    const Speaker *const copied = copy->speakers;
    for (int32_t i = 0; i < kSpeakers; ++i) EXPECT_EQ(i + 1, copied[i].type);

    SpeakerLayout *const kept = copy;
    EXPECT_TRUE(effect.matchArrangement(&copy, copy));
    EXPECT_FALSE(effect.matchArrangement(&copy, nullptr) || effect.allocateArrangement(&copy, -1) ||
                 effect.allocateArrangement(&copy, INT32_MAX));
    EXPECT_EQ(kept, copy);
    EXPECT_EQ(kSpeakers, copy->channelCount);
    for (SpeakerLayout **each : {&source, &copy}) {
        EXPECT_TRUE(effect.deallocateArrangement(each));
        EXPECT_EQ(nullptr, *each);
    }
}

TEST(Entry, RefusesAHostWithoutVersion)
{
    EXPECT_EQ(nullptr, VSTPluginMain(nullptr));
    FakeHost host;
    host.answers.clear(); // the host answers 0 to every call
    EXPECT_EQ(nullptr, VSTPluginMain(FakeHost::callback));
}

TEST(Entry, DescribesTheEffect)
{
    FakeHost host;
    const LoadedEffect effect;
    EXPECT_EQ(0, std::memcmp(&effect->signature, "PtsV", 4));
    EXPECT_EQ(0, std::memcmp(&effect->uniqueID, "trlQ", 4));
    EXPECT_EQ(1020, effect->version);
    EXPECT_TRUE(effect->numPrograms == 1 && effect->numInputs == 2 && effect->numOutputs == 2);
    EXPECT_EQ(kCanMono | kCanReplace | kProgramsAreChunks | kHasNoTail |
                  (Platform::hasWindowSystem() ? kHasEditor : 0),
              effect->capabilities);
    for (int32_t opcode : {effEditGetRect, effEditOpen, effEditIdle, effEditKeyDown})
        EXPECT_TRUE(Platform::hasWindowSystem() || effect.dispatch(opcode) == 0) << opcode;
    for (int32_t opcode : {effGetEffectName, effGetProductString})
        EXPECT_EQ("Tessarine", effect.text(opcode));
    EXPECT_EQ("Veloxon, Inc.", effect.text(effGetVendorString));
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

} // namespace
