#pragma once
#include "PluginBase/Util/Shared.h"

namespace DSP::Meter {

/// Peak since the last read, linear.
/// Thread  report, set: audio. read: any; a concurrent report may be lost
class Peak {
public:
    void report(float magnitude)
    {
        if (magnitude > largest) largest = magnitude;
    }
    void set(float magnitude) { largest = magnitude; }
    float read() { return largest.exchange(0.0f); }
    float present() const { return largest; }

private:
    Util::Shared<float> largest = 0.0f;
};

/// Smallest linear gain since the last read; 1 means no reduction.
/// Thread  as for Peak; clear: any
class Reduction {
public:
    void report(float gain)
    {
        if (gain < least) least = gain;
    }
    void clear() { least = 1.0f; }
    float read() { return least.exchange(1.0f); }
    float present() const { return least; }

private:
    Util::Shared<float> least = 1.0f;
};

} // namespace DSP::Meter
