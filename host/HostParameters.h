#pragma once
#include "plugin/ParameterTable.h"

/// One row of the flat list by which the host knows the parameters.
using HostParam = DSP::ParameterAddress;

/// The parameters as a VST 2 host sees them: numbers from 0 to 1, linear in the value, and strings. An index
/// beyond the list is ignored: no string is written, and get() gives 0.
class HostParameters {
public:
    explicit HostParameters(ParameterTable::Rows rows) : hostParams(rows) {}

    /// Ignores a non-finite value; one outside 0 to 1 is stored as it converts. True if the parameter moved.
    bool set(int32_t index, float share) const;
    float get(int32_t index) const;
    void writeLabel(int32_t index, char *label) const;  // at most 7 characters
    void writeDisplay(int32_t index, char *text) const; // at most 23
    void writeName(int32_t index, char *text) const;    // at most 23, or 15 for a host that wants short names
    void setLongNames(bool on) { longNames = on; }

private:
    const HostParam *find(int32_t index) const;

    ParameterTable::Rows hostParams;
    bool longNames = true;
};
