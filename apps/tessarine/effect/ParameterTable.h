#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

/// A parameter with its range in its own unit. One without a host index is a setting that the effect does not
/// show to hosts and that is reached through its component.
struct Parameter {
    std::string name, unit;
    DSP::ParamKind kind = DSP::ParamKind::real;
    DSP::ParameterAddress address = {};
    std::optional<int32_t> hostIndex;
    bool saved = false;                                      // in a chunk
    double minimum = 0.0, maximum = 1.0, defaultValue = 0.0; // of a bool 0, 1 and 0 or 1

    /// Stores a value of the range, through the host's entry where there is one.
    void set(EffectHost &host, double value) const;
    /// The present value as text, without its unit.
    std::string display(const EffectHost &host) const;
    /// A value as text, without its unit.
    std::string format(double value) const;
    /// "-60 to 0 dB", "off or on".
    std::string range() const;
};

/// The host's parameters in its order, then all other settings but those of the spectrum displays, which
/// stand four times under one name and change no sample.
std::vector<Parameter> listParameters(const EffectHost &host);

/// The settings of the spectrum displays, with their bands in front of the names.
std::vector<Parameter> listSpectrumSettings(const EffectHost &host);

} // namespace App
