#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>

#include "platform/offscreen/OffscreenWindowSystem.h"
#include "tests/fuzz/FuzzedEffect.h"
#include "ui/native/FrameBase.h"
#include "ui/native/WindowBase.h"

// Makes any calls of the interface in any order, with any numbers and with every pointer that a host may pass:
// null, or a buffer of just the size that the interface or the effect's documentation gives the call. The
// address sanitizer finds what is written past it.

namespace {

constexpr int32_t kLastOpcode = effGetNumMidiOutputChannels + 3;
constexpr uint32_t kMostCalls = 24, kMostFrames = 4096;
constexpr float kHighestRate = 768000.0f; // Hz; delay lines grow with the rate, so more is slow, and no more

/// Numbers out of an input; zeros behind its end.
class Source {
public:
    Source(const uint8_t *data, size_t size) : next(data), left(size) {}
    bool isEmpty() const { return left == 0; }
    template <class T>
    T take()
    {
        T value{};
        const size_t bytes = std::min(sizeof value, left);
        std::memcpy(&value, next, bytes);
        next += bytes;
        left -= bytes;
        return value;
    }
    uint32_t below(uint32_t count) { return take<uint16_t>() % count; }
    /// Mostly one that means something, else any.
    int32_t integer()
    {
        static constexpr int32_t kEdges[] = {0,  1,   -1,   2,         38,        39,
                                             40, 255, 4096, INT32_MAX, INT32_MIN, 0x10000};
        const uint8_t how = take<uint8_t>();
        if (how < 128) return how % 48;
        return how < 192 ? kEdges[how % std::size(kEdges)] : take<int32_t>();
    }
    float real()
    {
        using Limits = std::numeric_limits<float>;
        static constexpr float kEdges[] = {0.0f,
                                           1.0f,
                                           -1.0f,
                                           44100.0f,
                                           96000.0f,
                                           8000.0f,
                                           1e30f,
                                           -0.0f,
                                           Limits::max(),
                                           Limits::min(),
                                           Limits::denorm_min(),
                                           Limits::infinity(),
                                           -Limits::infinity(),
                                           Limits::quiet_NaN()};
        const uint8_t how = take<uint8_t>();
        if (how < 128) return static_cast<float>(how) / 127.0f;
        return how < 192 ? kEdges[how % std::size(kEdges)] : std::bit_cast<float>(take<uint32_t>());
    }

private:
    const uint8_t *next;
    size_t left;
};

/// Bytes that the host's buffer has for a call; for the rest what the interface reads of it is not read here.
size_t roomFor(int32_t opcode)
{
    static const std::map<int32_t, size_t> rooms = {
        {effGetProgramName, 24},
        {effGetParamLabel, kVstMaxLabelLen},
        {effGetParamDisplay, 24},
        {effGetParamName, 24},
        {effGetEffectName, kVstMaxEffectNameLen},
        {effGetVendorString, kVstMaxVendorStrLen},
        {effGetProductString, kVstMaxProductStrLen},
        {effGetErrorText, 256},
        {effShellGetNextPlugin, 64},
        {effGetInputProperties, 128},
        {effGetOutputProperties, 128},
        {effGetParameterProperties, 152},
    };
    const auto known = rooms.find(opcode);
    return known != rooms.end() ? known->second : 64;
}

/// A host with a window, one effect and its buffers, as long as one input lasts.
class Session {
public:
    explicit Session(Source &input) : in(input)
    {
        Platform::useWindowSystem(&windows);
        parent = windows.makeHostWindow(547, 488);
        windows.onPrompt = [](const Platform::PromptRequest &) { return std::optional<std::string>("3"); };
        effect = VSTPluginMain(FakeHost::callback);
        require(effect, "the effect can be made");
        if (in.take<uint8_t>() % 8 == 1)
            dispatch(effEditOpen, 0, 0, parent, 0); // opening takes longer than all the rest
    }
    ~Session()
    {
        if (effect) dispatch(effClose, 0, 0, nullptr, 0);
        require(UI::Native::WindowBase::liveWindows() == 0 && UI::Native::FrameBase::liveFrames() == 0,
                "no window outlives the effect");
        require(windows.timerCount() == 0, "no timer outlives the effect");
        Platform::useWindowSystem(nullptr);
    }

    /// False when the effect is gone.
    bool call()
    {
        switch (in.below(8)) {
        case 0: effect->setParameter(effect, in.integer(), in.real()); break;
        case 1: effect->getParameter(effect, in.integer()); break;
        case 2: play(); break;
        case 3: usePerson(); break;
        case 4: useHost(); break;
        default: ask(); break;
        }
        host.takeCalls();
        return effect != nullptr;
    }

    void requireSoundness()
    {
        for (int32_t i = 0; i < effect->numParams; ++i)
            require(std::isfinite(effect->getParameter(effect, i)), "parameters are finite");
    }

private:
    intptr_t dispatch(int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt)
    {
        return effect->dispatcher(effect, opcode, index, value, ptr, opt);
    }

    void ask()
    {
        const int32_t opcode =
            in.take<uint8_t>() < 250 ? static_cast<int32_t>(in.below(kLastOpcode)) : in.integer();
        const int32_t index = in.integer();
        intptr_t value = in.integer();
        const float opt = in.real();
        const bool null = in.below(6) == 0;
        switch (opcode) {
        case effClose: return close();
        case effEditOpen: dispatch(opcode, index, value, null ? nullptr : parent, opt); return windows.pump();
        case effEditGetRect: return getRecord<ERect *>(opcode, index, value, opt, null);
        case effGetChunk: return getRecord<void *>(opcode, index, value, opt, null);
        case effSetChunk: return setChunk(index, null);
        case effSetProgramName:
        case effString2Parameter:
        case effCanDo: return tellText(opcode, index, value, opt, null);
        case effGetProgramNameIndexed: return getWholeName(index, value, opt, null);
        case effSetSpeakerArrangement: return tellArrangement(null);
        case effGetSpeakerArrangement: return getArrangement(null);
        case effSetSampleRate:
        case effSetBlockSizeAndSampleRate:
            dispatch(opcode, index, value, nullptr, std::isfinite(opt) ? std::min(opt, kHighestRate) : opt);
            return;
        default: {
            std::vector<uint8_t> buffer(roomFor(opcode));
            dispatch(opcode, index, value, null ? nullptr : buffer.data(), opt);
            windows.pump();
        }
        }
    }

    void close()
    {
        dispatch(effClose, 0, 0, nullptr, 0);
        effect = nullptr;
    }

    template <class Record>
    void getRecord(int32_t opcode, int32_t index, intptr_t value, float opt, bool null)
    {
        const auto room = std::make_unique<Record>();
        dispatch(opcode, index, value, null ? nullptr : room.get(), opt);
    }

    void setChunk(int32_t index, bool null)
    {
        void *data = nullptr;
        const intptr_t size = dispatch(effGetChunk, 0, 0, &data, 0);
        std::vector<uint8_t> chunk(static_cast<uint8_t *>(data), static_cast<uint8_t *>(data) + size);
        if (in.below(2) == 0) chunk.resize(in.below(512) + 1);
        for (uint32_t changes = in.below(4); changes > 0; --changes)
            chunk[in.below(static_cast<uint32_t>(chunk.size()))] = in.take<uint8_t>();
        const auto bytes = static_cast<intptr_t>(chunk.size());
        const intptr_t sizes[] = {bytes, bytes,  bytes,     0,
                                  -1,    -bytes, INT32_MIN, in.below(static_cast<uint32_t>(bytes))};
        dispatch(effSetChunk, index, sizes[in.below(8)], null ? nullptr : chunk.data(), 0);
        requireSoundness();
    }

    void tellText(int32_t opcode, int32_t index, intptr_t value, float opt, bool null)
    {
        std::vector<char> text(in.below(in.below(2) == 0 ? 24 : 300));
        for (char &letter : text) letter = static_cast<char>(std::max<uint8_t>(in.take<uint8_t>(), 1));
        text.push_back('\0');
        dispatch(opcode, index, value, null ? nullptr : text.data(), opt);
    }

    /// The only text without a bound of its own: it is as long as the name that the host has set.
    void getWholeName(int32_t index, intptr_t value, float opt, bool null)
    {
        std::vector<char> text(200001);
        dispatch(effGetProgramNameIndexed, index, value, null ? nullptr : text.data(), opt);
    }

    void tellArrangement(bool null)
    {
        const auto inputs = std::make_unique<VstSpeakerArrangement>(),
                   outputs = std::make_unique<VstSpeakerArrangement>();
        inputs->numChannels = static_cast<int32_t>(in.below(9));
        outputs->numChannels = static_cast<int32_t>(in.below(9));
        const intptr_t first = in.below(3) == 0 ? in.below(4) : reinterpret_cast<intptr_t>(inputs.get());
        dispatch(effSetSpeakerArrangement, 0, first, null ? nullptr : outputs.get(), 0);
    }

    void getArrangement(bool null)
    {
        const auto inputs = std::make_unique<VstSpeakerArrangement *>(),
                   outputs = std::make_unique<VstSpeakerArrangement *>();
        const intptr_t first = in.below(3) == 0 ? in.below(4) : reinterpret_cast<intptr_t>(inputs.get());
        dispatch(effGetSpeakerArrangement, 0, first, null ? nullptr : outputs.get(), 0);
        require(null || !*outputs || (*outputs)->numChannels >= 0,
                "an arrangement that is given can be read");
    }

    void play()
    {
        const bool nothing = in.below(8) == 0;
        const uint32_t room = nothing ? 0 : in.below(in.below(4) == 0 ? kMostFrames : 128);
        const int32_t frames = nothing ? -std::abs(in.integer() / 2) : static_cast<int32_t>(room);
        std::vector<std::vector<float>> buffers(4, std::vector<float>(room));
        for (auto &buffer : buffers) std::ranges::fill(buffer, in.real());
        float *channels[] = {buffers[0].data(), buffers[1].data(), buffers[2].data(), buffers[3].data()};
        const uint8_t how = in.take<uint8_t>();
        if ((how & 15) == 0) channels[how >> 6] = nullptr;
        float **const outputs = (how & 16) && (how & 15) ? channels : channels + 2; // in place
        float **const inputs = how == 1 ? nullptr : channels;
        (how & 32 ? effect->process : effect->processReplacing)(effect, inputs, how == 2 ? nullptr : outputs,
                                                                frames);
    }

    void usePerson()
    {
        windows.movePointer({static_cast<int32_t>(in.below(560)), static_cast<int32_t>(in.below(500))});
        switch (in.below(9)) {
        case 0: return windows.pressButton();
        case 1: return windows.releaseButton();
        case 2: return windows.doubleClick();
        case 3: return windows.turnWheel(in.take<int8_t>());
        case 4: return windows.typeKey(in.take<uint8_t>());
        case 5: return windows.pressButton(Platform::kRightButton);
        case 6: return windows.releaseButton(Platform::kRightButton);
        case 7: return pressAtHost();
        default: return windows.advance(in.below(100));
        }
    }

    void pressAtHost()
    {
        const int32_t opcode = in.below(4) == 0 ? effEditKeyUp : effEditKeyDown, character = in.integer();
        const intptr_t code = in.below(70);
        dispatch(opcode, character, code, nullptr, static_cast<float>(in.below(16)));
    }

    /// What changes on the host's side.
    void useHost()
    {
        switch (in.below(5)) {
        case 0: host.connectedInputs = static_cast<int32_t>(in.below(4)); break;
        case 1: host.connectedOutputs = static_cast<int32_t>(in.below(4)); break;
        case 2: host.echoesAutomation = !host.echoesAutomation; break;
        case 3: windows.stealMouse(); break;
        default: windows.destroyWindow(parent); parent = windows.makeHostWindow(547, 488);
        }
    }

    Source &in;
    FakeHost host;
    Platform::OffscreenWindowSystem windows;
    Platform::WindowHandle parent = nullptr;
    AEffect *effect = nullptr;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Source source(data, size);
    Session session(source);
    for (uint32_t calls = 0; calls < kMostCalls && !source.isEmpty(); ++calls)
        if (!session.call()) return 0;
    session.requireSoundness();
    return 0;
}
