#include "tests/driver/AnyCall.h"

#include <algorithm>
#include <map>
#include <memory>

namespace {

constexpr uint32_t kPastLastOpcode = effBeginLoadProgram + 6;
constexpr float kHighestRate = 768000.0f; // Hz; delay lines grow with the rate, so more is slow, and no more

/// Bytes that the host's buffer has for a call; for the rest what the interface reads of it is not read here.
size_t roomFor(int32_t opcode)
{
    static const std::map<int32_t, size_t> rooms = {
        {effGetProgramName, 24},
        {effGetParamLabel, kLabelRoom},
        {effGetParamDisplay, 24},
        {effGetParamName, 24},
        {effGetEffectName, kEffectNameRoom},
        {effGetVendorString, kVendorRoom},
        {effGetProductString, kProductRoom},
        {effGetProgramNameIndexed, 200001}, // as long as the host's name
        {effGetErrorText, 256},
        {effGetInputProperties, 128},
        {effGetOutputProperties, 128},
        {effGetParameterProperties, 152}};
    const auto known = rooms.find(opcode);
    return known != rooms.end() ? known->second : 64;
}

std::vector<char> anyText(Random &random)
{
    std::vector<char> text(random.below(random.chance(0.5) ? 24 : 300));
    for (char &letter : text) letter = static_cast<char>(1 + random.below(255));
    text.push_back('\0');
    return text;
}

} // namespace

void callAnything(DrivenEffect &effect, Random &random)
{
    const auto opcode =
        static_cast<int32_t>(random.chance(0.98) ? random.below(kPastLastOpcode) : anyWord(random));
    const auto index = static_cast<int32_t>(anyWord(random));
    const intptr_t value = static_cast<int32_t>(anyWord(random));
    const float opt = anyReal(random);
    const bool null = random.chance(0.2);
    // Each in memory of its own, whose end is watched.
    const auto given = std::make_unique<void *>();
    const auto inputs = std::make_unique<SpeakerLayout>(), outputs = std::make_unique<SpeakerLayout>();
    const auto givenInputs = std::make_unique<SpeakerLayout *>(),
               givenOutputs = std::make_unique<SpeakerLayout *>();
    const auto call = [&](intptr_t number, void *pointer, float real) {
        effect.dispatch(opcode, index, number, null ? nullptr : pointer, real);
    };
    switch (opcode) {
    case effClose:            // the effect would be gone
    case effSetChunk: return; // of damaged chunks instead
    case effEditOpen: effect.dispatch(opcode, index, value, nullptr, opt); return;
    case effEditGetRect:
    case effGetChunk: return call(value, given.get(), opt);
    case effSetProgramName:
    case effString2Parameter:
    case effCanDo: return call(value, anyText(random).data(), opt);
    case effSetSpeakerArrangement:
        inputs->channelCount = static_cast<int32_t>(random.below(9));
        outputs->channelCount = static_cast<int32_t>(random.below(9));
        return call(random.chance(0.3) ? random.below(4) : reinterpret_cast<intptr_t>(inputs.get()),
                    outputs.get(), opt);
    case effGetSpeakerArrangement:
        call(random.chance(0.3) ? random.below(4) : reinterpret_cast<intptr_t>(givenInputs.get()),
             givenOutputs.get(), opt);
        return effect.require(!*givenOutputs || (*givenOutputs)->channelCount >= 0,
                              "an arrangement that is given can be read");
    case effSetSampleRate:
    case effSetBlockSizeAndSampleRate:
        return call(value, nullptr, std::isfinite(opt) ? std::min(opt, kHighestRate) : opt);
    default: call(value, std::vector<uint8_t>(roomFor(opcode)).data(), opt);
    }
}
