#include "ui/editor/TextTable.h"

namespace UI {

namespace {

using Native::TextRow;

constexpr TextRow tip(uint32_t stringId, const char *english)
{
    return {0, 0, 0, 0, 0, stringId, TextRow::asPlaced, english};
}

// Columns as in TextRow.
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
    tip(401, "Output Gain"),
    tip(402, "Low Cutoff"), tip(403, "Mid Cutoff"), tip(404, "High Cutoff"),
    tip(405, "Band 1 Gain"), tip(406, "Band 2 Gain"), tip(407, "Band 3 Gain"), tip(408, "Band 4 Gain"),
    tip(409, "Band 1 Solo"), tip(410, "Band 2 Solo"), tip(411, "Band 3 Solo"), tip(412, "Band 4 Solo"),
    tip(413, "Band 1 Bypass"), tip(414, "Band 2 Bypass"),
    tip(415, "Band 3 Bypass"), tip(416, "Band 4 Bypass"),
    tip(417, "Band 1 Threshold"), tip(418, "Band 2 Threshold"),
    tip(419, "Band 3 Threshold"), tip(420, "Band 4 Threshold"),
    tip(421, "Limiter Bypass"),
};
// clang-format on

} // namespace

const Native::TextRow &textRow(uint32_t index) { return kRows[index]; }

} // namespace UI
