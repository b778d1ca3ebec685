#pragma once
#include "PluginBase/Util/AlignedBuffer.h"

class Plugin;

/// Carries a block from the host's buffers through the chain and back. The chain destroys its input and must
/// not see the host's output before it is done, so it works on buffers that grow with the longest block.
/// Thread  one call at a time: VSTPlugin holds its audio lock around each
class BufferAdapter {
public:
    enum class Output { add, replace };

    /// `blockScale`: samples in a buffer for each frame.
    BufferAdapter(Plugin &owner, uint32_t blockScale) : plugin(owner), scale(blockScale) {}

    /// `channels` that the host connects on each side, 1 or 2. With `asMono` the chain runs the left one and
    /// both outputs get it.
    void setLayout(uint32_t channels, bool asMono);
    /// One pointer per channel. A missing channel leaves the outputs as they are.
    void process(float **inputs, float **outputs, uint32_t frames, Output output);

private:
    bool areComplete(float **buffers) const;

    Plugin &plugin;
    const uint32_t scale;
    uint32_t connected = 0;
    bool monoActive = false;
    Util::AlignedBuffer<float> inputLeft, inputRight, outputLeft, outputRight;
};
