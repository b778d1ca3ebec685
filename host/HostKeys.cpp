#include "host/HostKeys.h"

bool isHostTab(int32_t code)
{
    constexpr int32_t kTab = 2, kLetterT = 116; // some hosts send the letter t for the Tab key
    return code == kTab || code == kLetterT;
}

uint32_t virtualKeyOf(int32_t code)
{
    struct Row {
        int32_t first, last; // host key codes
        uint32_t key;        // virtual key of `first`
    };
    static constexpr Row kRows[] = {
        {1, 1, 8},     // back
        {4, 4, 13},    // return
        {19, 19, 13},  // enter
        {6, 6, 27},    // escape
        {7, 7, 32},    // space
        {9, 9, 35},    // end
        {10, 10, 36},  // home
        {11, 14, 37},  // left, up, right, down
        {15, 16, 33},  // page up, page down
        {21, 22, 45},  // insert, delete
        {23, 23, 112}, // help, as F1
        {40, 51, 112}, // F1 to F12
        {52, 53, 52},  // num lock, scroll lock: the host's codes unchanged
        {54, 56, 16},  // shift, control, alt
        {57, 57, 57},  // equals: the host's code unchanged
    };
    for (const Row &row : kRows)
        if (code >= row.first && code <= row.last) return row.key + static_cast<uint32_t>(code - row.first);
    return 0;
}
