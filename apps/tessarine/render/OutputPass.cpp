#include "apps/tessarine/render/OutputPass.h"

#include <algorithm>

#include "apps/tessarine/files/Block.h"
#include "dsp/kernels/Kernels.h"

namespace App {

namespace {

/// Sum of the squares, in independent partial sums that the processor computes in parallel.
double sumOfSquares(const float *samples, size_t count)
{
    constexpr size_t kSums = 8;
    double sums[kSums] = {}, total = 0.0;
    size_t i = 0;
    for (; i + kSums <= count; i += kSums) {
        for (size_t k = 0; k < kSums; ++k)
            sums[k] += static_cast<double>(samples[i + k]) * static_cast<double>(samples[i + k]);
    }
    for (; i < count; ++i) total += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
    for (const double sum : sums) total += sum;
    return total;
}

} // namespace

OutputPass::OutputPass(const Layout &wanted, AudioWriter &to, AudioWriter *delta)
    : layout(wanted),
      writer(to),
      deltaWriter(delta),
      loudnessIn(layout.channels, layout.rate, LoudnessMeter::Scope::full),
      loudnessOut(layout.channels, layout.rate, LoudnessMeter::Scope::full),
      aligned(size_t{layout.delay} * layout.channels)
{
}

void OutputPass::take(const Chunk &chunk, const std::vector<Column> &columns)
{
    const uint32_t channels = layout.channels;
    out.resize(size_t{chunk.frames} * channels);
    interleave(chunk.left.data(), chunk.right.data(), channels, chunk.frames, out.data());
    if (deltaWriter) aligned.insert(aligned.end(), chunk.in.begin(), chunk.in.end());
    if (layout.mix < 1.0) mixWithNeutral(chunk);

    const uint64_t end = layout.outBegin + layout.length;
    const FrameRange kept = overlap(chunk.position, chunk.frames, layout.outBegin, end);
    float *const first = out.data() + size_t{kept.first} * channels;
    writer.write(first, kept.count);
    loudnessOut.add(first, kept.count);
    if (deltaWriter) writeDelta(kept.first, kept.count);
    const FrameRange read =
        overlap(chunk.position, chunk.frames, layout.inBegin, layout.inBegin + layout.length);
    loudnessIn.add(chunk.in.data() + size_t{read.first} * channels, read.count);
    addColumns(chunk, columns);
    if (deltaWriter) aligned.erase(aligned.begin(), aligned.end() - ptrdiff_t{layout.delay} * channels);
}

void OutputPass::mixWithNeutral(const Chunk &chunk)
{
    const auto wet = static_cast<float>(layout.mix), dry = 1.0f - wet;
    neutral.resize(out.size());
    interleave(chunk.neutralLeft.data(), chunk.neutralRight.data(), layout.channels, chunk.frames,
               neutral.data());
    for (size_t i = 0; i < out.size(); ++i) out[i] = wet * out[i] + dry * neutral[i];
}

void OutputPass::writeDelta(uint32_t first, uint32_t frames)
{
    const size_t offset = size_t{first} * layout.channels;
    difference.resize(size_t{frames} * layout.channels);
    for (size_t i = 0; i < difference.size(); ++i) difference[i] = out[offset + i] - aligned[offset + i];
    deltaWriter->write(difference.data(), frames);
}

void OutputPass::addColumns(const Chunk &chunk, const std::vector<Column> &columns)
{
    const auto peak = DSP::Kernels::active().block.peak;
    uint64_t frame = 0;
    for (Column column : columns) {
        const size_t offset = frame * layout.channels, samples = column.frames * layout.channels;
        const bool isPreRoll = chunk.position + frame < layout.inBegin;
        frame += column.frames;
        if (isPreRoll) continue;
        column.peakIn = peak(chunk.in.data() + offset, static_cast<uint32_t>(samples));
        column.peakOut = peak(out.data() + offset, static_cast<uint32_t>(samples));
        column.squaresIn = sumOfSquares(chunk.in.data() + offset, samples) / layout.channels;
        column.squaresOut = sumOfSquares(out.data() + offset, samples) / layout.channels;
        measured.add(column);
    }
}

} // namespace App
