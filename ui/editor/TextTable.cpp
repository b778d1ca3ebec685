#include "ui/editor/TextTable.h"

namespace UI {

namespace {

using Native::TextRow;

// The columns are those of TextRow.
// clang-format off
constexpr TextRow kRows[kTextRows] = {
    {6, 3, 55, 18, 3, 377, TextRow::left, "band 1"},
    {6, 3, 55, 18, 3, 378, TextRow::left, "band 2"},
    {6, 3, 55, 18, 3, 379, TextRow::left, "band 3"},
    {6, 3, 55, 18, 3, 380, TextRow::left, "band 4"},
    {429, 10, 111, 18, 3, 381, TextRow::left, "output gain"},
    {429, 239, 90, 18, 3, 382, TextRow::left, "limiter"},
    {429, 342, 111, 18, 3, 383, TextRow::left, "options"},
    {11, 209, 52, 12, 0, 384, TextRow::left, "crossover:"},
    {60, 209, 27, 12, 0, 385, TextRow::right, "low:"},
    {164, 209, 55, 12, 0, 386, TextRow::right, "mid:"},
    {296, 209, 55, 12, 0, 387, TextRow::right, "high:"},
    {423, 209, 54, 12, 0, 388, TextRow::right, "gain:"},
    {1, 163, 42, 12, 0, 389, TextRow::right, "thresh:"},
    {1, 178, 42, 12, 0, 390, TextRow::right, "gain:"},
    {1, 193, 42, 12, 0, 391, TextRow::right, "ratio:"},
    {1, 208, 42, 12, 0, 392, TextRow::right, "attack:"},
    {1, 223, 42, 12, 0, 393, TextRow::right, "release:"},
    {423, 267, 54, 12, 0, 394, TextRow::right, "threshold:"},
    {423, 282, 54, 12, 0, 395, TextRow::right, "margin:"},
    {423, 297, 54, 12, 0, 396, TextRow::right, "attack:"},
    {423, 312, 54, 12, 0, 397, TextRow::right, "release:"},
    {423, 372, 90, 12, 0, 398, TextRow::right, "spectrum on input:"},
    {423, 392, 90, 12, 0, 399, TextRow::right, "brickwall limiter:"},
    {423, 412, 90, 12, 0, 400, TextRow::right, "link band controls:"},
    {0, 0, 0, 0, 0, 401, TextRow::asPlaced, "Output Gain"},
    {0, 0, 0, 0, 0, 402, TextRow::asPlaced, "Low Cutoff"},
    {0, 0, 0, 0, 0, 403, TextRow::asPlaced, "Mid Cutoff"},
    {0, 0, 0, 0, 0, 404, TextRow::asPlaced, "High Cutoff"},
    {0, 0, 0, 0, 0, 405, TextRow::asPlaced, "Band 1 Gain"},
    {0, 0, 0, 0, 0, 406, TextRow::asPlaced, "Band 2 Gain"},
    {0, 0, 0, 0, 0, 407, TextRow::asPlaced, "Band 3 Gain"},
    {0, 0, 0, 0, 0, 408, TextRow::asPlaced, "Band 4 Gain"},
    {0, 0, 0, 0, 0, 409, TextRow::asPlaced, "Band 1 Solo"},
    {0, 0, 0, 0, 0, 410, TextRow::asPlaced, "Band 2 Solo"},
    {0, 0, 0, 0, 0, 411, TextRow::asPlaced, "Band 3 Solo"},
    {0, 0, 0, 0, 0, 412, TextRow::asPlaced, "Band 4 Solo"},
    {0, 0, 0, 0, 0, 413, TextRow::asPlaced, "Band 1 Bypass"},
    {0, 0, 0, 0, 0, 414, TextRow::asPlaced, "Band 2 Bypass"},
    {0, 0, 0, 0, 0, 415, TextRow::asPlaced, "Band 3 Bypass"},
    {0, 0, 0, 0, 0, 416, TextRow::asPlaced, "Band 4 Bypass"},
    {0, 0, 0, 0, 0, 417, TextRow::asPlaced, "Band 1 Threshold"},
    {0, 0, 0, 0, 0, 418, TextRow::asPlaced, "Band 2 Threshold"},
    {0, 0, 0, 0, 0, 419, TextRow::asPlaced, "Band 3 Threshold"},
    {0, 0, 0, 0, 0, 420, TextRow::asPlaced, "Band 4 Threshold"},
    {0, 0, 0, 0, 0, 421, TextRow::asPlaced, "Limiter Bypass"},
};
// clang-format on

} // namespace

const Native::TextRow &textRow(uint32_t index) { return kRows[index]; }

} // namespace UI
