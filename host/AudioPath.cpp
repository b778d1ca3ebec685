#include <limits>

#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/Math.h"
#include "host/VSTPlugin.h"

// The way of a block from the host's buffers through the chain and back, and what decides if there is one.

namespace {

/// The rate in whole Hz, or 0 for one that the chain cannot be told.
uint32_t wholeRate(float rate)
{
    constexpr double kHighest = std::numeric_limits<uint32_t>::max();
    return rate <= kHighest ? DSP::Math::roundHalfAwayFromZero(rate) : 0;
}

} // namespace

void VSTPlugin::process(float **inputs, float **outputs, int32_t frames)
{
    processBlock(inputs, outputs, frames, Output::add);
}

void VSTPlugin::processReplacing(float **inputs, float **outputs, int32_t frames)
{
    processBlock(inputs, outputs, frames, Output::replace);
}

void VSTPlugin::processBlock(float **inputs, float **outputs, int32_t frames, Output output)
{
    const Util::Hold block(audioLock);
    if (!active) resume();
    if (!active || frames <= 0) return;

    Channels channels;
    if (!readChannels(inputs, outputs, channels)) return;
    const auto count = static_cast<uint32_t>(frames);
    if (!runChain(count, channels)) return;
    writeChannel(count, outputLeft.data(), accumulateLeft, channels.outLeft, output);
    if (channels.outRight)
        writeChannel(count, outputRight.data(), accumulateRight, channels.outRight, output);
}

bool VSTPlugin::readChannels(float **inputs, float **outputs, Channels &channels) const
{
    if (!inputs || !outputs) return false;
    const bool stereoIn = connectedInputs == 2, stereoOut = connectedOutputs == 2;
    channels.inLeft = inputs[0];
    channels.inRight = stereoIn ? inputs[1] : nullptr;
    channels.outLeft = outputs[0];
    channels.outRight = stereoOut ? outputs[1] : nullptr;
    return channels.inLeft && channels.outLeft && (channels.inRight || !stereoIn) &&
           (channels.outRight || !stereoOut);
}

/// The chain destroys its input and must not see the host's output before it is done, so it works on copies.
bool VSTPlugin::runChain(uint32_t frames, const Channels &channels)
{
    const int count = static_cast<int>(frames);
    const size_t room = size_t{frames} * blockScale;
    for (auto *const buffer : {&inputLeft, &inputRight, &outputLeft, &outputRight}) buffer->grow(room);

    const bool rightIn = channels.inRight && !monoActive, rightOut = channels.outRight && !monoActive;
    DSP::ippsCopy_32f(channels.inLeft, inputLeft.data(), count);
    if (rightIn) DSP::ippsCopy_32f(channels.inRight, inputRight.data(), count);

    const uint32_t written = transform(frames, inputLeft.data(), rightIn ? inputRight.data() : nullptr,
                                       outputLeft.data(), rightOut ? outputRight.data() : nullptr);
    if (written != frames) return false;
    if (channels.outRight && !rightOut) DSP::ippsCopy_32f(outputLeft.data(), outputRight.data(), count);
    return true;
}

void VSTPlugin::writeChannel(uint32_t frames, const float *from, Util::AlignedBuffer<float> &accumulate,
                             float *to, Output output)
{
    const int count = static_cast<int>(frames);
    if (output == Output::replace) {
        DSP::ippsCopy_32f(from, to, count);
        return;
    }
    accumulate.grow(frames);
    DSP::ippsCopy_32f(from, accumulate.data(), count);
    DSP::ippsAdd_32f_I(accumulate.data(), to, count);
}

void VSTPlugin::resume()
{
    const Util::Hold hold(audioLock);
    const uint32_t rate = wholeRate(getSampleRate());
    if (!readConnections() || rate == 0) {
        suspend(); // an effect that played must not go on over channels that no longer match
        return;
    }
    setChannelCount(connectedInputs, connectedOutputs);
    hostSampleRate = rate;
    monoActive = transformHandle().global()->getProcessAsMono();
    Plugin::resume(rate);
}

/// Asks the host for the layout. False for one that the effect refuses: nothing connected, or mixed widths.
bool VSTPlugin::readConnections()
{
    if (!isInputConnected(0)) return false;
    connectedInputs = isInputConnected(1) ? 2 : 1;
    if (!isOutputConnected(0)) return false;
    connectedOutputs = isOutputConnected(1) ? 2 : 1;
    return connectedInputs == connectedOutputs;
}

void VSTPlugin::suspend()
{
    const Util::Hold hold(audioLock);
    if (active) Plugin::suspend();
}

void VSTPlugin::setSampleRate(float rate)
{
    const uint32_t whole = wholeRate(rate);
    if (whole == 0) return;
    AudioEffectX::setSampleRate(rate); // first: if memory is short below, the next block tries again
    if (whole != hostSampleRate) {
        const bool wasActive = active;
        if (wasActive) Plugin::suspend();
        hostSampleRate = whole;
        Plugin::resume(whole);
        if (!wasActive) Plugin::suspend(); // the chain has seen the rate, and rests as before
    }
}

uint32_t VSTPlugin::delayForHost() const
{
    return transformHandle().global()->getDelayCompensation() ? reportedLatency.load() : 0;
}

void VSTPlugin::latencyChanged()
{
    reportedLatency = latency();
    delayCompensationChanged();
}

void VSTPlugin::delayCompensationChanged()
{
    // The host is called by whoever serves the message, never by the audio thread.
    if (static_cast<int32_t>(delayForHost()) != initialDelay()) postMessage(latencyMoved);
}

void VSTPlugin::applyLatency()
{
    setInitialDelay(static_cast<int32_t>(delayForHost()));
    ioChanged();
}
