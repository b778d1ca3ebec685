#include "host/BufferAdapter.h"

#include "dsp/kernels/VectorOperations.h"
#include "plugin/Plugin.h"

void BufferAdapter::setLayout(uint32_t channels, bool asMono)
{
    connected = channels;
    monoActive = asMono;
}

bool BufferAdapter::areComplete(float **buffers) const
{
    return buffers && buffers[0] && (connected != 2 || buffers[1]);
}

void BufferAdapter::process(float **inputs, float **outputs, uint32_t frames, Output output)
{
    if (!areComplete(inputs) || !areComplete(outputs)) return;
    for (auto *const buffer : {&inputLeft, &inputRight, &outputLeft, &outputRight})
        buffer->grow(size_t{frames} * scale);

    const int count = static_cast<int>(frames);
    const bool stereo = connected == 2, runsRight = stereo && !monoActive;
    DSP::ippsCopy_32f(inputs[0], inputLeft.data(), count);
    if (runsRight) DSP::ippsCopy_32f(inputs[1], inputRight.data(), count);
    const uint32_t written =
        plugin.transform(frames, inputLeft.data(), runsRight ? inputRight.data() : nullptr, outputLeft.data(),
                         runsRight ? outputRight.data() : nullptr);
    if (written != frames) return;

    const auto write = output == Output::add ? DSP::ippsAdd_32f_I : DSP::ippsCopy_32f;
    write(outputLeft.data(), outputs[0], count);
    if (stereo) write((runsRight ? outputRight : outputLeft).data(), outputs[1], count);
}
