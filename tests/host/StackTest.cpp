#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>

#include "tests/host/Module.h"
#include "tests/signals/Compare.h"

// A 32-bit Windows host guarantees a stack alignment of 4 bytes only, while SSE needs 16. It may also set the x87 FPU,
// which returns floats, to any precision.

namespace {

/// Calls `function` with `count` words of `arguments`, on a stack `offset` bytes above a multiple of 16. Preserves the
/// registers that may hold the result.
extern "C" void callWithStackOffset(); // (offset, function, arguments, count)
asm(R"(
    .text
_callWithStackOffset:
    pushl %ebp
    movl %esp, %ebp
    pushl %esi
    pushl %edi
    movl 20(%ebp), %ecx         # count
    movl 16(%ebp), %esi         # arguments
    leal 32(,%ecx,4), %eax
    subl %eax, %esp
    andl $-16, %esp
    addl 8(%ebp), %esp          # offset
    movl %esp, %edi
    cld
    rep movsl
    call *12(%ebp)              # function
    leal -8(%ebp), %esp
    popl %edi
    popl %esi
    popl %ebp
    ret
)");

template <class T>
uint32_t word(T value)
{
    static_assert(sizeof value == 4);
    return std::bit_cast<uint32_t>(value);
}

/// Calls a function with 32-bit arguments on a stack `offset` bytes above a multiple of 16.
template <class Result, class... Parameters>
Result call(uint32_t offset, Result (*function)(Parameters...), std::type_identity_t<Parameters>... arguments)
{
    const uint32_t words[] = {word(arguments)...};
    const auto caller =
        reinterpret_cast<Result (*)(uint32_t, void *, const uint32_t *, uint32_t)>(callWithStackOffset);
    return caller(offset, reinterpret_cast<void *>(function), words, std::size(words));
}

/// Makes every kind of host call with the given stack offset. Returns all results.
std::vector<float> useAll(LoadedEffect::Entry entry, uint32_t offset)
{
    FakeHost host;
    std::vector<float> results;
    AEffect *const effect = call(offset, entry, FakeHost::callback);
    const auto dispatch = [&](int32_t opcode, int32_t index, intptr_t value, void *ptr, float opt) {
        results.push_back(
            static_cast<float>(call(offset, effect->dispatcher, effect, opcode, index, value, ptr, opt)));
    };
    dispatch(effOpen, 0, 0, nullptr, 0);
    for (const float rate : {48000.0f, 96000.0f}) {
        dispatch(effSetSampleRate, 0, 0, nullptr, rate);
        for (int32_t i = 0; i < effect->numParams; ++i) {
            char text[64] = {};
            call(offset, effect->setParameter, effect, i, i < 30 ? 0.3f : 0.0f);
            results.push_back(call(offset, effect->getParameter, effect, i));
            dispatch(effGetParamDisplay, i, 0, text, 0);
            for (const char character : text) results.push_back(character);
        }
        dispatch(effMainsChanged, 0, 1, nullptr, 0);
        Audio music = Signals::music(1, 48000, 3000, 0);
        float *channels[] = {music.left.data(), music.right.data()};
        call(offset, effect->processReplacing, effect, channels, channels, 3000);
        call(offset, effect->process, effect, channels, channels, 3000);
        for (const auto &channel : {music.left, music.right})
            results.insert(results.end(), channel.begin(), channel.end());
        void *chunk = nullptr;
        dispatch(effGetChunk, 0, 0, &chunk, 0);
        dispatch(effSetChunk, 0, static_cast<intptr_t>(results.back()), chunk, 0);
        dispatch(effMainsChanged, 0, 0, nullptr, 0);
    }
    dispatch(effClose, 0, 0, nullptr, 0);
    return results;
}

class InStackPrecision {
public:
    explicit InStackPrecision(uint16_t control)
    {
        asm volatile("fnstcw %0\n\tfldcw %1" : "=m"(before) : "m"(control));
    }
    ~InStackPrecision() { asm volatile("fldcw %0" : : "m"(before)); }
    static uint16_t now()
    {
        uint16_t control;
        asm volatile("fnstcw %0" : "=m"(control));
        return control;
    }

private:
    uint16_t before;
};

// Tests each instruction-set variant: SSE2 needs an aligned stack, AVX2 does not.
class Stack : public testing::TestWithParam<const char *> {
protected:
    Stack() { choose(GetParam()); }
    ~Stack() override { choose(""); }
    static void choose(const std::string &set) { _putenv(("TESSARINE_ISA=" + set).c_str()); }
};
INSTANTIATE_TEST_SUITE_P(Variants, Stack, testing::Values("portable", "sse2", "avx2"));

TEST_P(Stack, NeedsNoAlignmentOrFpuPrecisionFromTheHost)
{
    const Module module;
    const std::vector<float> expected = useAll(module.entry(), 0);
    EXPECT_GT(peakOf(expected), 0.1);
    for (const char *name : {"main", "VSTPluginMain"})
        for (const uint32_t offset : {0u, 4u, 8u, 12u})
            for (const uint16_t control :
                 {0x007F, 0x027F, 0x0F7F}) { // 24, 53 and 64 bits, the last rounding toward zero
                const InStackPrecision precision(control);
                const std::vector<float> actual = useAll(module.entry(name), offset);
                EXPECT_EQ(control, InStackPrecision::now());
                EXPECT_TRUE(expected == actual) << name << ' ' << offset << ' ' << control;
            }
}

} // namespace
