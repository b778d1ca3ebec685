#pragma once

/// The lane operations of one instruction set made callable, for LanesTest.
struct LanesOperation {
    const char *name;
    /// Reads eight lanes of each argument and writes eight.
    void (*run)(const float *a, const float *b, float *out);
};
struct LanesProbe {
    const LanesOperation *operations;
    int count;
};
