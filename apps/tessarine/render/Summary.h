#pragma once
#include <string>
#include <vector>

#include "apps/tessarine/render/Renderer.h"

namespace App {

/// A table of texts; the first column names the rows. With a heading the other columns are numbers.
struct Table {
    bool headed = false; // the first row is the heading
    std::vector<std::vector<std::string>> rows;
};

/// The figures of a rendering as a person reads them; screen and report show the same.
struct Summary {
    Table files;                      // what was read, written and reported
    Table levels;                     // peak, true peak and loudness, in and out
    Table goal;                       // loudness and true peak: asked, predicted, reached; may be empty
    Table choice;                     // parameters chosen for them
    Table reduction;                  // deepest and mean gain reduction of each band and of the limiter
    Table work;                       // speed and delay
    std::vector<std::string> remarks; // what the user should know, each a sentence
};

Summary summarise(const RenderOptions &options, const Rendering &rendering);

/// Aligned for a terminal, two blanks in front.
std::string toText(const Table &table);

/// Shared with the picture: "Band 1" to "Band 4", "Limiter".
extern const std::vector<std::string> kGainNames;

} // namespace App
