#pragma once
#include <span>
#include <vector>

#include "dsp/component/ParameterAddress.h"

/// The parameters of a plug-in as every plug-in format, the renderer and the tests list them. A row is an
/// address; its record() holds name, unit, group, range, default and names of values.
/// Order   components in the order of their registration, in each the floats, the bools and the ints
/// Thread  constant once built; a row's value and record: see DSP::ParameterOwner
class ParameterTable {
public:
    using Rows = std::span<const DSP::ParameterAddress>;

    ParameterTable() = default;
    /// Numbers the parameters that a host sees: `hostIndex` of their records becomes the row in hostRows().
    explicit ParameterTable(std::span<DSP::Component *const> components);

    Rows hostRows() const { return visible; }
    /// Settings that no host sees.
    Rows hiddenRows() const { return hidden; }

private:
    std::vector<DSP::ParameterAddress> visible, hidden;
};
