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
    std::erase_if(taken, [](const Call &call) { return call.opcode == audioMasterPinConnected; });
    return taken;
}

intptr_t FakeHost::answer(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *ptr,
                          float opt)
{
    if (opcode == audioMasterPinConnected) // 0 is the interface's yes
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
