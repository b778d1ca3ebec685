#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "tests/host/FakeHost.h"

namespace {

/// The base classes with nothing added but what they leave open.
class PlainEffect final : public AudioEffectX {
public:
    explicit PlainEffect(audioMasterCallback host) : AudioEffectX(host, 3, 5) {}
    void process(float **, float **, int32_t) override { open(); }
    void open() override
    {
        if (outOfMemory) throw std::bad_alloc();
    }
    void install(AEffEditor *shown) { editor.reset(shown); }

    bool outOfMemory = false;
};

class RecordingEditor final : public AEffEditor {
public:
    using AEffEditor::AEffEditor;
    intptr_t onKeyDown(const VstKeyCode &code) override { return (key = code).character; }

    VstKeyCode key = {};
};

struct AudioEffectTest : testing::Test {
    FakeHost host;
    PlainEffect effect{FakeHost::callback};
    AEffect *const record = effect.getAeffect();

    intptr_t dispatch(int32_t opcode, int32_t index = 0, intptr_t value = 0, void *ptr = nullptr,
                      float opt = 0)
    {
        return record->dispatcher(record, opcode, index, value, ptr, opt);
    }
};

TEST_F(AudioEffectTest, ForwardsToTheEditorOnlyIfThereIsOne)
{
    EXPECT_EQ(0, dispatch(effEditKeyDown, 'a', 1));
    auto *const editor = new RecordingEditor(&effect);
    effect.install(editor);
    EXPECT_EQ(0, dispatch(effEditGetRect));
    EXPECT_EQ('a', dispatch(effEditKeyDown, 'a', 13, nullptr, 2.9f));
    EXPECT_TRUE(editor->key.virt == 13 && editor->key.modifier == 2);
    for (float noModifier : {std::numeric_limits<float>::quiet_NaN(), 1e9f, -1.0f}) {
        dispatch(effEditKeyDown, 0, 0, nullptr, noModifier);
        EXPECT_EQ(0, editor->key.modifier);
    }
}

TEST_F(AudioEffectTest, TakesNoSmallNumberForAnAddress)
{
    VstSpeakerArrangement *output = nullptr;
    for (const intptr_t number : {0, 8, 4088}) // a host may write the number of a pin there
        EXPECT_EQ(0, dispatch(effGetSpeakerArrangement, 0, number, &output));
}

TEST_F(AudioEffectTest, LetsNoExceptionReachTheHost)
{
    effect.outOfMemory = true;
    EXPECT_EQ(0, dispatch(effOpen));
    record->process(record, nullptr, nullptr, 1);
}

TEST_F(AudioEffectTest, AsksTheHostAndIsNeutralWithoutOne)
{
    host.answers[audioMasterGetSampleRate] = 88200;
    host.answers[audioMasterGetBlockSize] = -1;
    EXPECT_EQ(88200.0f, effect.updateSampleRate());
    EXPECT_EQ(1024, effect.updateBlockSize());
    host.connectedInputs = 1;
    EXPECT_TRUE(effect.isInputConnected(0) && !effect.isInputConnected(1) && effect.isOutputConnected(1));
    host.takeCalls();
    effect.sizeWindow(547, 488);
    const FakeHost::Call call = host.takeCalls().at(0);
    EXPECT_TRUE(call.opcode == audioMasterSizeWindow && call.index == 547 && call.value == 488);

    PlainEffect alone(nullptr);
    EXPECT_TRUE(alone.isInputConnected(0));
    EXPECT_FALSE(alone.ioChanged());
    EXPECT_EQ(nullptr, alone.getTimeInfo(0));
    EXPECT_EQ(44100.0f, alone.updateSampleRate());
    alone.setParameterAutomated(0, 1.0f);
}

TEST_F(AudioEffectTest, NumbersItsRequests)
{
    char text[65] = {};
    const struct {
        int32_t number; // of the interface, as hosts know it
        std::function<void()> ask;
    } requests[] = {{6, [&] { effect.wantEvents(1); }},
                    {7, [&] { effect.getTimeInfo(0); }},
                    {10, [&] { effect.tempoAt(0); }},
                    {11, [&] { effect.getNumAutomatableParameters(); }},
                    {12, [&] { effect.getParameterQuantization(); }},
                    {13, [&] { effect.ioChanged(); }},
                    {14, [&] { effect.needIdle(); }},
                    {16, [&] { effect.updateSampleRate(); }},
                    {17, [&] { effect.updateBlockSize(); }},
                    {18, [&] { effect.getInputLatency(); }},
                    {19, [&] { effect.getOutputLatency(); }},
                    {20, [&] { effect.getPreviousPlug(nullptr); }},
                    {21, [&] { effect.getNextPlug(nullptr); }},
                    {22, [&] { effect.willProcessReplacing(); }},
                    {23, [&] { effect.getCurrentProcessLevel(); }},
                    {24, [&] { effect.getAutomationState(); }},
                    {25, [&] { effect.offlineStart(nullptr, 1, 2); }},
                    {26, [&] { effect.offlineRead(nullptr, 0, true); }},
                    {27, [&] { effect.offlineWrite(nullptr, 0); }},
                    {28, [&] { effect.offlineGetCurrentPass(); }},
                    {29, [&] { effect.offlineGetCurrentMetaPass(); }},
                    {30, [&] { effect.setOutputSampleRate(1); }},
                    {31, [&] { effect.getOutputSpeakerArrangement(); }},
                    {32, [&] { effect.getHostVendorString(text); }},
                    {33, [&] { effect.getHostProductString(text); }},
                    {34, [&] { effect.getHostVendorVersion(); }},
                    {35, [&] { effect.hostVendorSpecific(1, 2, nullptr, 3); }},
                    {37, [&] { effect.canHostDo("sizeWindow"); }},
                    {38, [&] { effect.getHostLanguage(); }},
                    {39, [&] { effect.openWindow(nullptr); }},
                    {40, [&] { effect.closeWindow(nullptr); }},
                    {41, [&] { effect.getDirectory(); }},
                    {42, [&] { effect.updateDisplay(); }},
                    {43, [&] { effect.beginEdit(0); }},
                    {44, [&] { effect.endEdit(0); }},
                    {45, [&] { effect.openFileSelector(nullptr); }},
                    {49, [&] { effect.getInputSpeakerArrangement(); }}};
    for (const auto &request : requests) {
        host.takeCalls();
        request.ask();
        const auto calls = host.takeCalls();
        ASSERT_EQ(1u, calls.size()) << request.number;
        EXPECT_EQ(request.number, calls[0].opcode);
    }
}

} // namespace
