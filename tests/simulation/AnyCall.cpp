#include "tests/simulation/AnyCall.h"

#include <algorithm>
#include <map>
#include <memory>

namespace {

constexpr uint32_t kPastLastOpcode = effBeginLoadProgram + 6;
constexpr float kHighestRate = 768000.0f; // Hz; long delay lines at higher rates would only take time

/// Size of the host's buffer in bytes; an arbitrary size for opcodes without a documented one.
size_t bufferSize(int32_t opcode)
{
    static const std::map<int32_t, size_t> sizes = {
        {effGetProgramName, 24},
        {effGetParamLabel, kLabelRoom},
        {effGetParamDisplay, 24},
        {effGetParamName, 24},
        {effGetEffectName, kEffectNameRoom},
        {effGetVendorString, kVendorRoom},
        {effGetProductString, kProductRoom},
        {effGetProgramNameIndexed, 200001}, // the longest name that a host can set
        {effGetErrorText, 256},
        {effGetInputProperties, 128},
        {effGetOutputProperties, 128},
        {effGetParameterProperties, 152}};
    const auto known = sizes.find(opcode);
    return known != sizes.end() ? known->second : 64;
}

std::vector<char> anyString(Random &random)
{
    std::vector<char> text(random.below(random.chance(0.5) ? 24 : 300));
    for (char &letter : text) letter = static_cast<char>(1 + random.below(255));
    text.push_back('\0');
    return text;
}

} // namespace

void callAnything(EffectInstance &effect, Random &random)
{
    const auto opcode =
        static_cast<int32_t>(random.chance(0.98) ? random.below(kPastLastOpcode) : anyWord(random));
    const auto index = static_cast<int32_t>(anyWord(random));
    const intptr_t value = static_cast<int32_t>(anyWord(random));
    const float opt = anyReal(random);
    const bool null = random.chance(0.2);
    // Separate allocations, so that the address sanitizer checks the end of each.
    const auto given = std::make_unique<void *>();
    const auto inputs = std::make_unique<SpeakerLayout>(), outputs = std::make_unique<SpeakerLayout>();
    const auto givenInputs = std::make_unique<SpeakerLayout *>(),
               givenOutputs = std::make_unique<SpeakerLayout *>();
    const auto call = [&](intptr_t number, void *pointer, float real) {
        effect.dispatch(opcode, index, number, null ? nullptr : pointer, real);
    };
    switch (opcode) {
    case effClose:            // would delete the effect
    case effSetChunk: return; // ChunkDamage tests it
    case effEditOpen: effect.dispatch(opcode, index, value, nullptr, opt); return;
    case effEditGetRect:
    case effGetChunk: return call(value, given.get(), opt);
    case effSetProgramName:
    case effString2Parameter:
    case effCanDo: return call(value, anyString(random).data(), opt);
    case effSetSpeakerArrangement:
        inputs->channelCount = static_cast<int32_t>(random.below(9));
        outputs->channelCount = static_cast<int32_t>(random.below(9));
        return call(random.chance(0.3) ? random.below(4) : reinterpret_cast<intptr_t>(inputs.get()),
                    outputs.get(), opt);
    case effGetSpeakerArrangement:
        call(random.chance(0.3) ? random.below(4) : reinterpret_cast<intptr_t>(givenInputs.get()),
             givenOutputs.get(), opt);
        return effect.require(!*givenOutputs || (*givenOutputs)->channelCount >= 0,
                              "a returned speaker arrangement is readable");
    case effSetSampleRate:
    case effSetBlockSizeAndSampleRate:
        return call(value, nullptr, std::isfinite(opt) ? std::min(opt, kHighestRate) : opt);
    default: call(value, std::vector<uint8_t>(bufferSize(opcode)).data(), opt);
    }
}
