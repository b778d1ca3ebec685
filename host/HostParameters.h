#pragma once
#include "plugin/ParameterTable.h"

/// One row of the flat parameter list that the host indexes.
using HostParam = DSP::ParameterAddress;

/// The parameters in the form that VST 2 uses: values from 0 to 1, linear in the parameter, and strings. An
/// index outside the list is ignored: no string is written, and get() returns 0.
class HostParameters {
public:
    explicit HostParameters(ParameterTable::Rows rows) : hostParams(rows) {}

    /// Ignores a non-finite value; extrapolates a value outside 0 to 1. True if the parameter changed.
    bool set(int32_t index, float share) const;
    float get(int32_t index) const;
    void writeLabel(int32_t index, char *label) const;  // at most 7 characters
    void writeDisplay(int32_t index, char *text) const; // at most 23 characters
    void writeName(int32_t index, char *text) const;    // at most 23 characters, or 15 with short names
    void setLongNames(bool on) { longNames = on; }

private:
    const HostParam *find(int32_t index) const;

    ParameterTable::Rows hostParams;
    bool longNames = true;
};
