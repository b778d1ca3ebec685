#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/tessarine/effect/EffectHost.h"

namespace App {

/// A parameter with its range in its own unit. If it has no host index, it is hidden from hosts and accessed
/// through its component.
struct Parameter {
    std::string name, unit;
    DSP::ParamKind kind = DSP::ParamKind::real;
    DSP::ParameterAddress address = {};
    std::optional<int32_t> hostIndex;
    bool saved = false;                                      // stored in chunks
    bool changesAudio = false;                               // false for settings of the editor's window
    double minimum = 0.0, maximum = 1.0, defaultValue = 0.0; // bool: 0 is off, 1 is on

    /// Sets a value within the range, through the plug-in interface if the parameter has a host index.
    void set(EffectHost &host, double value) const;
    /// The current value as a string without its unit.
    std::string display(const EffectHost &host) const;
    /// `value` as a string without its unit.
    std::string format(double value) const;
    /// The valid values for an error message: "a value from -60 to 0 dB", "off or on".
    std::string range() const;
};

/// All parameters: those of hosts in the order of their indices, then the hidden ones. The names differ; those
/// of the spectrum displays have the band as a prefix: "Band 1 Spectrum Overlap".
std::vector<Parameter> listParameters(const EffectHost &host);

} // namespace App
