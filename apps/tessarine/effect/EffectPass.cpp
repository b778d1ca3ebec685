#include "apps/tessarine/effect/EffectPass.h"

#include <algorithm>
#include <chrono>

#include "apps/tessarine/files/Block.h"

namespace App {

EffectPass::EffectPass(AudioReader &from, EffectHost &effect, uint32_t block, EffectHost *neutralEffect)
    : reader(from), host(effect), neutral(neutralEffect), blockFrames(block)
{
}

void EffectPass::separateInput(const Chunk &chunk, std::vector<float> &left, std::vector<float> &right) const
{
    left.resize(chunk.frames);
    right.resize(chunk.frames);
    separate(chunk.in.data(), reader.channels(), chunk.frames, left.data(), right.data());
}

void EffectPass::run(uint32_t frames, Chunk &chunk)
{
    using Clock = std::chrono::steady_clock;
    const uint32_t channels = reader.channels();
    chunk.position = position;
    chunk.frames = frames;
    chunk.in.resize(size_t{frames} * channels);
    const uint32_t got = reader.read(chunk.in.data(), frames);
    std::fill(chunk.in.begin() + ptrdiff_t{got} * channels, chunk.in.end(), 0.0f);
    separateInput(chunk, chunk.left, chunk.right);
    if (neutral) separateInput(chunk, chunk.neutralLeft, chunk.neutralRight);
    for (uint32_t done = 0; done < frames;) {
        const uint32_t count = std::min(frames - done, blockFrames);
        float *const sides[] = {chunk.left.data() + done, chunk.right.data() + done};
        const Clock::time_point begin = Clock::now();
        host.process(sides, sides, count);
        seconds += std::chrono::duration<double>(Clock::now() - begin).count();
        if (neutral) {
            float *const dry[] = {chunk.neutralLeft.data() + done, chunk.neutralRight.data() + done};
            neutral->process(dry, dry, count);
        }
        if (afterBlock) afterBlock(count);
        done += count;
    }
    position += frames;
}

} // namespace App
