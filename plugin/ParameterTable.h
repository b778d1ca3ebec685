#pragma once
#include <span>
#include <vector>

#include "dsp/component/ParameterAddress.h"

/// List of a plug-in's parameters, used by every plug-in format, the renderer and the tests. A row is an address
/// whose record() contains name, unit, group, range, default and value names.
/// Order   components in order of registration; floats, bools, then ints within a component
/// Thread  constant after construction; for a row's value and record see DSP::ParameterOwner
class ParameterTable {
public:
    using Rows = std::span<const DSP::ParameterAddress>;

    ParameterTable() = default;
    /// Sets `hostIndex` in the record of each parameter that hosts see to its row in hostRows().
    explicit ParameterTable(std::span<DSP::Component *const> components);

    Rows hostRows() const { return visible; }
    /// Parameters that are hidden from hosts.
    Rows hiddenRows() const { return hidden; }

private:
    std::vector<DSP::ParameterAddress> visible, hidden;
};
