#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <climits>

#include "tests/host/FakeHost.h"

namespace {

/// An opcode that returns a value other than 0 or writes to the host's buffer.
struct Answered {
    int32_t opcode;
    intptr_t withoutBuffer, withBuffer;
    bool writes = false;
};

constexpr Answered kAnswered[] = {
    {6, 0, 0, true},  {7, 0, 0, true},  {8, 0, 0, true},  {22, 0x4E764566, 0x4E764566},
    {26, 1, 1},       {28, 1, 1},       {29, 0, 1},       {30, 1, 1},
    {31, 1, 1},       {32, 1, 1},       {35, 1, 1},       {43, 1, 1},
    {45, 0, 1, true}, {47, 0, 1, true}, {48, 0, 1, true}, {49, 1020, 1020},
    {52, 1, 1},       {58, 2300, 2300}, {63, -1, -1}};

TEST(Dispatcher, AnswersUnknownOpcodesWithZeroAndKeepsTheBuffer)
{
    FakeHost host;
    const LoadedEffect effect;
    std::vector<int32_t> opcodes = {INT_MIN, INT_MAX, 0xFFFF, 0x10000, 0x56737450};
    for (int32_t opcode = -300; opcode <= 600; ++opcode) opcodes.push_back(opcode);
    for (const int32_t opcode : opcodes) {
        if (opcode == effClose || opcode == effGetChunk ||
            (opcode >= effEditGetRect && opcode <= effEditIdle) ||
            (opcode >= effEditKeyDown && opcode <= effSetEditKnobMode))
            continue; // covered by other tests
        SCOPED_TRACE(opcode);
        const auto *const row = std::ranges::find(kAnswered, opcode, &Answered::opcode);
        const Answered expected = row != std::end(kAnswered) ? *row : Answered{opcode, 0, 0};
        EXPECT_EQ(expected.withoutBuffer, effect.dispatch(opcode));
        std::array<char, 1024> buffer{};
        EXPECT_EQ(expected.withBuffer, effect.dispatch(opcode, 0, 0, buffer.data()));
        EXPECT_EQ(expected.writes, buffer != decltype(buffer){});
    }
}

} // namespace
