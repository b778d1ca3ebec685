#pragma once
#include <cstdint>

namespace DSP {

/// How a component wants its blocks cut: 0 takes each block whole, which is what every component of this
/// chain does; a frame size would delay the output by one sample less than the frame.
struct BlockFramer {
    uint32_t frameSize = 0;
    uint32_t inputs = 2;
    uint32_t outputs = 2;

    bool operator==(const BlockFramer &) const = default;
    uint32_t latency() const { return frameSize ? frameSize - 1 : 0; }
};

} // namespace DSP
