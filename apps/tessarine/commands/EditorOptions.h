#pragma once
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/Geometry.h"

namespace CLI {
class App;
}

namespace App {

struct EditorOptions {
    std::filesystem::path png;
    std::filesystem::path in;            // played before the picture is taken; empty for none
    std::vector<std::string> settings;   // each "NAME=VALUE"
    std::filesystem::path chunk;         // loaded before the settings; empty for none
    std::optional<double> at;            // seconds of the recording; else kUsualMoment or its end
    std::string language;                // one of the editor's; empty for English
    uint32_t scale = 100;                // per cent
    std::string focus;                   // name of the control with the keyboard; empty for none
    std::optional<::Point> point, press; // where the mouse rests, and where its left button goes down

    static constexpr double kUsualMoment = 10.0; // seconds
};

/// Adds the command with all of its options but `settings`.
CLI::App *addEditor(CLI::App &app, EditorOptions &options);

} // namespace App
