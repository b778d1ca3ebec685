#pragma once
#include <string>
#include <vector>

#include "apps/tessarine/render/Renderer.h"

namespace App {

/// A table of strings. The first column labels the rows. If `headed` is true, the other columns are numbers.
struct Table {
    bool headed = false; // the first row is the heading
    std::vector<std::vector<std::string>> rows;
};

/// The figures of a rendering, formatted for the terminal and the report.
struct Summary {
    Table files;     // names and formats of the input and the written files
    Table levels;    // peaks and loudness of input and output
    Table goal;      // requested, predicted and measured loudness and true peak; may be empty
    Table choice;    // parameters chosen for the goal; may be empty
    Table reduction; // maximum and mean gain reduction of each band and of the limiter
    Table work;      // speed and delay
    std::vector<std::string> remarks; // warnings, one sentence each
};

Summary summarise(const RenderOptions &options, const Rendering &rendering);

/// Formats the table for a terminal: aligned columns, each line indented by two spaces.
std::string toText(const Table &table);

/// "Band 1" to "Band 4", "Limiter", in the order of Column's gains.
extern const std::vector<std::string> kGainNames;

} // namespace App
