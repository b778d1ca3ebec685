#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>

#include "tests/host/FakeHost.h"

namespace {

/// The base classes with nothing added but what they leave open.
class PlainEffect final : public AudioEffectX {
public:
    explicit PlainEffect(audioMasterCallback host) : AudioEffectX(host, 3, 5) {}
    void process(float **, float **, int32_t frames) override
    {
        lastFrames = frames;
        if (outOfMemory) throw std::bad_alloc();
    }
    void open() override
    {
        if (outOfMemory) throw std::bad_alloc();
        ++opened;
    }
    void install(AEffEditor *shown) { editor.reset(shown); }

    int32_t lastFrames = 0;
    int opened = 0;
    bool outOfMemory = false;
};

class RecordingEditor final : public AEffEditor {
public:
    using AEffEditor::AEffEditor;
    intptr_t getRect(ERect **answer) override
    {
        *answer = &rect;
        return 1;
    }
    intptr_t open(void *) override { return 7; }
    void update() override { ++updates; }
    intptr_t onKeyDown(const VstKeyCode &code) override
    {
        key = code;
        return 1;
    }
    intptr_t setKnobMode(int32_t newMode) override { return mode = newMode; }

    ERect rect = {0, 0, 10, 20};
    VstKeyCode key = {};
    int32_t mode = 0;
    int updates = 0;
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

TEST_F(AudioEffectTest, FillsTheRecordForTheHost)
{
    EXPECT_EQ(0, std::memcmp(&record->magic, "PtsV", 4));
    EXPECT_EQ(3, record->numPrograms);
    EXPECT_EQ(5, record->numParams);
    EXPECT_EQ(1, record->numInputs);
    EXPECT_EQ(2, record->numOutputs);
    EXPECT_EQ(1.0f, record->ioRatio);
    EXPECT_EQ(0x4e6f4566, record->uniqueID);
    EXPECT_EQ(1, record->version);
    EXPECT_EQ(0, record->flags);
    record->process(record, nullptr, nullptr, 64);
    EXPECT_EQ(64, effect.lastFrames);
}

TEST_F(AudioEffectTest, AnswersEveryOpcodeWithItsDefault)
{
    char buffer[256] = "text";
    constexpr intptr_t kArgument = 2; // goes as value
    const std::map<int32_t, intptr_t> notZero = {
        {effIdentify, 0x4e764566},
        {effCanBeAutomated, 1},
        {effGetNumProgramCategories, 1},
        {effConnectInput, 1},
        {effConnectOutput, 1},
        {effSetBlockSizeAndSampleRate, 1},
        {effKeysRequired, 1},
        {effGetVstVersion, 2300},
        {effGetCurrentMidiProgram, -1},
        {effSetTotalSampleToProcess, kArgument},
    };
    for (int32_t opcode = -3; opcode <= 120; ++opcode) {
        if (opcode == effClose || opcode == effSetProgram || opcode == effGetProgram) continue;
        const auto known = notZero.find(opcode);
        EXPECT_EQ(known != notZero.end() ? known->second : 0,
                  dispatch(opcode, 0, kArgument, buffer, 44100.0f))
            << "opcode " << opcode;
    }
    EXPECT_EQ(1, effect.opened);
}

TEST_F(AudioEffectTest, StoresWhatTheHostSets)
{
    dispatch(effSetSampleRate, 0, 0, nullptr, 48000.0f);
    dispatch(effSetBlockSize, 0, 256);
    EXPECT_EQ(48000.0f, effect.getSampleRate());
    EXPECT_EQ(256, effect.getBlockSize());
    dispatch(effSetBlockSizeAndSampleRate, 0, 512, nullptr, 96000.0f);
    EXPECT_EQ(96000.0f, effect.getSampleRate());
    EXPECT_EQ(512, effect.getBlockSize());

    dispatch(effSetProgram, 0, 2);
    for (intptr_t outside : {3, -1}) dispatch(effSetProgram, 0, outside);
    EXPECT_EQ(2, dispatch(effGetProgram));

    char name[32] = "x";
    dispatch(effGetProgramName, 0, 0, name);
    EXPECT_STREQ("", name);

    VstSpeakerArrangement arrangement = {}, *in = &arrangement, *out = &arrangement;
    EXPECT_EQ(0, dispatch(effGetSpeakerArrangement, 0, reinterpret_cast<intptr_t>(&in), &out));
    EXPECT_EQ(nullptr, in);
    EXPECT_EQ(nullptr, out);
}

TEST_F(AudioEffectTest, ForwardsToTheEditorOnlyIfThereIsOne)
{
    ERect *rect = nullptr;
    EXPECT_EQ(0, dispatch(effEditGetRect, 0, 0, &rect));
    EXPECT_EQ(0, dispatch(effEditKeyDown, 'a', 1));

    auto *const editor = new RecordingEditor(&effect);
    effect.install(editor);
    EXPECT_EQ(1, dispatch(effEditGetRect, 0, 0, &rect));
    EXPECT_EQ(&editor->rect, rect);
    EXPECT_EQ(0, dispatch(effEditGetRect));
    EXPECT_EQ(7, dispatch(effEditOpen));

    EXPECT_EQ(1, dispatch(effEditKeyDown, 'a', 13, nullptr, 2.9f));
    EXPECT_EQ('a', editor->key.character);
    EXPECT_EQ(13, editor->key.virt);
    EXPECT_EQ(2, editor->key.modifier);
    for (float noModifier : {std::numeric_limits<float>::quiet_NaN(), 1e9f, -1.0f}) {
        dispatch(effEditKeyDown, 0, 0, nullptr, noModifier);
        EXPECT_EQ(0, editor->key.modifier);
    }
    EXPECT_EQ(-1, dispatch(effEditKeyUp, 'a'));
    EXPECT_EQ(2, dispatch(effSetEditKnobMode, 0, 2));

    dispatch(effEditIdle);
    EXPECT_EQ(0, editor->updates);
    editor->postUpdate();
    for (int i = 0; i < 3; ++i) dispatch(effEditIdle);
    EXPECT_EQ(1, editor->updates);
}

TEST_F(AudioEffectTest, LetsNoExceptionReachTheHost)
{
    effect.outOfMemory = true;
    EXPECT_EQ(0, dispatch(effOpen));
    record->process(record, nullptr, nullptr, 1);
    effect.outOfMemory = false;
    dispatch(effOpen);
    EXPECT_EQ(1, effect.opened);
}

TEST_F(AudioEffectTest, AsksTheHostWithItsOpcodes)
{
    host.answers[audioMasterGetSampleRate] = 88200;
    host.answers[audioMasterGetBlockSize] = -1;
    EXPECT_EQ(88200.0f, effect.updateSampleRate());
    EXPECT_EQ(1024, effect.updateBlockSize());
    host.connectedInputs = 1;
    EXPECT_TRUE(effect.isInputConnected(0));
    EXPECT_FALSE(effect.isInputConnected(1));
    EXPECT_TRUE(effect.isOutputConnected(1));
    host.takeCalls();

    effect.setParameterAutomated(4, 0.25f);
    effect.sizeWindow(547, 488);
    const std::vector<FakeHost::Call> calls = host.takeCalls();
    ASSERT_EQ(2u, calls.size());
    EXPECT_EQ(audioMasterAutomate, calls[0].opcode);
    EXPECT_EQ(4, calls[0].index);
    EXPECT_EQ(0.25f, calls[0].opt);
    EXPECT_EQ(audioMasterSizeWindow, calls[1].opcode);
    EXPECT_EQ(547, calls[1].index);
    EXPECT_EQ(488, calls[1].value);
}

TEST_F(AudioEffectTest, NumbersHostOpcodesAsTheInterfaceDoes)
{
    char text[64];
    const std::vector<std::pair<int, std::function<void()>>> wrappers = {
        {1, [&] { effect.getMasterVersion(); }},
        {2, [&] { effect.getCurrentUniqueId(); }},
        {3, [&] { effect.masterIdle(); }},
        {6, [&] { effect.wantEvents(); }},
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
        {25, [&] { effect.offlineStart(nullptr, 0, 0); }},
        {26, [&] { effect.offlineRead(nullptr, 0); }},
        {27, [&] { effect.offlineWrite(nullptr, 0); }},
        {28, [&] { effect.offlineGetCurrentPass(); }},
        {29, [&] { effect.offlineGetCurrentMetaPass(); }},
        {30, [&] { effect.setOutputSampleRate(1.0f); }},
        {31, [&] { effect.getOutputSpeakerArrangement(); }},
        {32, [&] { effect.getHostVendorString(text); }},
        {33, [&] { effect.getHostProductString(text); }},
        {34, [&] { effect.getHostVendorVersion(); }},
        {35, [&] { effect.hostVendorSpecific(0, 0, nullptr, 0); }},
        {37, [&] { effect.canHostDo("sizeWindow"); }},
        {38, [&] { effect.getHostLanguage(); }},
        {39, [&] { effect.openWindow(nullptr); }},
        {40, [&] { effect.closeWindow(nullptr); }},
        {41, [&] { effect.getDirectory(); }},
        {42, [&] { effect.updateDisplay(); }},
        {43, [&] { effect.beginEdit(0); }},
        {44, [&] { effect.endEdit(0); }},
        {45, [&] { effect.openFileSelector(nullptr); }},
        {49, [&] { effect.getInputSpeakerArrangement(); }},
    };
    for (const auto &[opcode, call] : wrappers) {
        call();
        const std::vector<FakeHost::Call> calls = host.takeCalls();
        ASSERT_EQ(1u, calls.size()) << "opcode " << opcode;
        EXPECT_EQ(opcode, calls[0].opcode);
    }
}

TEST(AudioEffectAlone, IsNeutralWithoutAHost)
{
    PlainEffect effect(nullptr);
    EXPECT_EQ(1, effect.getMasterVersion());
    EXPECT_TRUE(effect.isInputConnected(0));
    EXPECT_FALSE(effect.ioChanged());
    EXPECT_EQ(nullptr, effect.getTimeInfo(0));
    EXPECT_EQ(44100.0f, effect.updateSampleRate());
    effect.setParameterAutomated(0, 1.0f);
}

TEST_F(AudioEffectTest, WritesNumbersIntoSevenColumns)
{
    using Writer = void (AudioEffect::*)(float, char *);
    const struct {
        Writer write;
        float value;
        const char *text;
    } cases[] = {
        {&AudioEffect::dB2string, 0.0f, "-oo"},
        {&AudioEffect::dB2string, 1.0f, "0.00000"},
        {&AudioEffect::dB2string, 0.1f, "-20.000"},
        {&AudioEffect::Hz2string, 0.0f, "0.00000"},
        {&AudioEffect::Hz2string, 441.0f, "100.000"},
        {&AudioEffect::ms2string, 441.0f, "10.0000"},
        {&AudioEffect::float2string, 123456.7f, " 123456"},
        {&AudioEffect::float2string, 1e10f, "  Huge!"},
    };
    for (const auto &row : cases) {
        char text[16];
        (effect.*row.write)(row.value, text);
        EXPECT_STREQ(row.text, text);
    }
    char text[16];
    effect.long2string(42, text);
    EXPECT_STREQ("     42", text);
    effect.long2string(100000000, text);
    EXPECT_STREQ("Huge!", text);
}

TEST_F(AudioEffectTest, CopiesSpeakerArrangements)
{
    VstSpeakerArrangement *first = nullptr, *second = nullptr;
    ASSERT_TRUE(effect.allocateArrangement(&first, 12)); // more than the record declares
    first->type = 5;
    first->speakers[7].type = 9;
    ASSERT_TRUE(effect.matchArrangement(&second, first));
    EXPECT_EQ(12, second->numChannels);
    EXPECT_EQ(9, second->speakers[7].type);
    EXPECT_TRUE(effect.matchArrangement(&second, second));
    EXPECT_FALSE(effect.matchArrangement(&second, nullptr));
    EXPECT_FALSE(effect.allocateArrangement(nullptr, 2));
    EXPECT_FALSE(effect.copySpeaker(&first->speakers[0], nullptr));
    effect.deallocateArrangement(&first);
    effect.deallocateArrangement(&second);
    EXPECT_EQ(nullptr, second);
}

} // namespace
