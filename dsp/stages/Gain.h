#pragma once
#include "dsp/component/ComponentImpl.h"

namespace DSP {

/// Output gain after the maximizer, -18 to 18 dB.
class Gain final : public ComponentImpl<Gain> {
public:
    explicit Gain(PluginLink &plugin);

    bool isActive() const override { return true; }
    void process(const Block &block) override;
    void reset() override {}

    float gain() const { return gainDb; }
    /// Clamps `db` to the range. Any thread; takes `settingLock`.
    bool setGain(float db);

    /// Indices in the parameter lists.
    struct Param {
        enum Float : uint32_t { gain };
    };

private:
    Util::Shared<float> gainDb = 0.0f;
    Util::Shared<float> gainLinear = 1.0f;
};

} // namespace DSP
