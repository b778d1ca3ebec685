#include "apps/tessarine/effect/EffectPass.h"

#include <algorithm>
#include <chrono>

#include "apps/tessarine/files/Block.h"

namespace App {

EffectPass::EffectPass(AudioReader &from, EffectHost &effect, uint32_t block)
    : reader(from), host(effect), blockFrames(block)
{
}

void EffectPass::run(uint32_t frames, Chunk &chunk)
{
    using Clock = std::chrono::steady_clock;
    const uint32_t channels = reader.channels();
    chunk.position = position;
    chunk.frames = frames;
    chunk.in.resize(size_t{frames} * channels);
    chunk.left.resize(frames);
    chunk.right.resize(frames);
    const uint32_t got = reader.read(chunk.in.data(), frames);
    std::fill(chunk.in.begin() + ptrdiff_t{got} * channels, chunk.in.end(), 0.0f);
    separate(chunk.in.data(), channels, frames, chunk.left.data(), chunk.right.data());
    for (uint32_t done = 0; done < frames;) {
        const uint32_t count = std::min(frames - done, blockFrames);
        float *const sides[] = {chunk.left.data() + done, chunk.right.data() + done};
        const Clock::time_point begin = Clock::now();
        host.process(sides, sides, count);
        seconds += std::chrono::duration<double>(Clock::now() - begin).count();
        if (afterBlock) afterBlock(count);
        done += count;
    }
    position += frames;
}

} // namespace App
