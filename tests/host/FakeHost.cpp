#include "tests/host/FakeHost.h"

#include <algorithm>
#include <cstring>
#include <utility>

int FakeHost::count(int32_t opcode) const
{
    return static_cast<int>(std::ranges::count(calls, opcode, &Call::opcode));
}

std::vector<FakeHost::Call> FakeHost::takeCalls()
{
    std::vector<Call> taken = std::exchange(calls, {});
    std::erase_if(taken, [](const Call &call) { return call.opcode == hostChannelConnected; });
    return taken;
}

intptr_t FakeHost::answer(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                          float opt)
{
    if (opcode == hostChannelConnected) // 0 means connected
        return index < (value == 0 ? connectedInputs : connectedOutputs) ? 0 : 1;
    calls.push_back({opcode, index, value, opt});
    if (opcode == audioMasterGetProductString) std::strcpy(static_cast<char *>(ptr), product.c_str());
    if (onCall) onCall(opcode);
    if (opcode == audioMasterAutomate && echoesAutomation) effect->setParameter(effect, index, opt);
    const auto known = answers.find(opcode);
    return known != answers.end() ? known->second : 0;
}

std::string LoadedEffect::text(int32_t opcode, int32_t index) const
{
    char buffer[256] = {};
    std::strcpy(buffer, kUntouched);
    dispatch(opcode, index, 0, buffer);
    return buffer;
}

Audio LoadedEffect::process(Audio in) const
{
    const std::vector<float> untouched(in.frames(), kUntouchedSample);
    Audio out = {untouched, untouched};
    float *inputs[] = {in.left.data(), in.right.data()}, *outputs[] = {out.left.data(), out.right.data()};
    effect->processReplacing(effect, inputs, outputs, static_cast<int32_t>(in.frames()));
    return out;
}

void LoadedEffect::setAll(Signals::Random &random) const
{
    std::vector<float> values;
    for (int32_t i = 0; i < effect->numParams; ++i)
        values.push_back(text(effGetParamLabel, i).empty() ? random.chance(0.2) : random.real(0, 1));
    std::sort(values.begin() + 1, values.begin() + 4);
    for (int32_t i = 0; i < effect->numParams; ++i) set(i, values[static_cast<size_t>(i)]);
}

LoadedEffect::Bytes LoadedEffect::chunk() const
{
    void *data = nullptr;
    const intptr_t size = dispatch(effGetChunk, 0, 0, &data);
    return Bytes(static_cast<uint8_t *>(data), static_cast<uint8_t *>(data) + size);
}

intptr_t LoadedEffect::load(Bytes chunk) const
{
    return dispatch(effSetChunk, 0, static_cast<intptr_t>(chunk.size()), chunk.data());
}
