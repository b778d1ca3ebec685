#pragma once
#include "PluginBase/Util/AlignedBuffer.h"

class Plugin;

/// Runs a block from the host's buffers through the chain. The chain overwrites its input, and the host's
/// outputs must not change before the block is complete, so the chain works on copies. Their buffers grow with
/// the longest block.
/// Thread  one call at a time; VSTPlugin holds its audio lock during each call
class BufferAdapter {
public:
    enum class Output { add, replace };

    /// `blockScale`: buffer size in samples per frame.
    BufferAdapter(Plugin &owner, uint32_t blockScale) : plugin(owner), scale(blockScale) {}

    /// `channels`: 1 or 2, the same for inputs and outputs. With `asMono` the chain processes only the left input
    /// and both outputs receive the result.
    void setLayout(uint32_t channels, bool asMono);
    /// One pointer per channel. If a pointer is null, the outputs stay unchanged.
    void process(float **inputs, float **outputs, uint32_t frames, Output output);

private:
    bool areComplete(float **buffers) const;

    Plugin &plugin;
    const uint32_t scale;
    uint32_t connected = 0;
    bool monoActive = false;
    Util::AlignedBuffer<float> inputLeft, inputRight, outputLeft, outputRight;
};
