#include "apps/tessarine/commands/EditorOptions.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <fmt/format.h>

#include "host/VSTEditor.h"

namespace App {

namespace {

constexpr const char *kLanguages[] = {"english", "japanese", "german", "french", "italian", "spanish"};
constexpr uint32_t kScales[] = {100, 200, 300}; // per cent: every pixel becomes a square of whole pixels

/// The whole of the text as a number.
template <class Number>
std::optional<Number> readNumber(std::string_view text)
{
    Number value{};
    const char *const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && rest == end ? std::optional(value) : std::nullopt;
}

void addPlace(CLI::App *command, const char *option, std::optional<::Point> &place, const char *help)
{
    const auto read = [&place, option](const std::string &text) {
        const size_t comma = std::min(text.find(','), text.size());
        const auto x = readNumber<int32_t>(std::string_view(text).substr(0, comma));
        const auto y = readNumber<int32_t>(std::string_view(text).substr(std::min(comma + 1, text.size())));
        const ::Rect window = ::Rect::at({}, VSTEditor::kWidth, VSTEditor::kHeight);
        if (!x || !y || !window.contains({*x, *y}))
            throw CLI::ValidationError(
                option, fmt::format("there is no pixel '{}' in the editor; give X,Y from 0,0 to {},{}", text,
                                    window.right, window.bottom));
        place = ::Point{*x, *y};
    };
    command->add_option_function<std::string>(option, read, help)->type_name("X,Y");
}

std::string checkMoment(const std::string &text)
{
    const auto seconds = readNumber<double>(text);
    return seconds && std::isfinite(*seconds) && *seconds >= 0.0
               ? std::string()
               : fmt::format("there is no moment '{}'; give seconds from the start of the recording", text);
}

/// Takes one of these words and no other.
template <class Words>
auto oneOf(const char *what, const Words &words)
{
    return [what, &words](const std::string &text) {
        std::string all;
        for (const auto &word : words) {
            const std::string known = fmt::format("{}", word);
            if (text == known) return std::string();
            all += (all.empty() ? "" : ", ") + known;
        }
        return fmt::format("there is no {} '{}'; choose one of {}", what, text, all);
    };
}

} // namespace

CLI::App *addEditor(CLI::App &app, EditorOptions &options)
{
    CLI::App *const command =
        app.add_subcommand("editor", "Draw the editor as it looks while a recording plays");
    command->add_option("--png", options.png, "Picture to write")->required();
    CLI::Option *const in = command->add_option(
        "--in", options.in, "Recording to play; without it the editor has just been opened");
    command
        ->add_option(
            "--at", options.at,
            fmt::format("Moment of the recording at which the picture is taken; without it {:g}, or its "
                        "end if that comes first",
                        EditorOptions::kUsualMoment))
        ->type_name("SECONDS")
        ->check(checkMoment, "")
        ->needs(in);
    command->add_option("--chunk", options.chunk,
                        "Settings to start from: a file that 'tessarine chunk' wrote; --set comes after it");
    command
        ->add_option("--language", options.language, "english, japanese, german, french, italian or spanish")
        ->type_name("LANGUAGE")
        ->check(oneOf("language", kLanguages), "");
    command->add_option("--scale", options.scale, "Size in per cent: 100, 200 or 300")
        ->type_name("PERCENT")
        ->check(oneOf("scale", kScales), "");
    command
        ->add_option(
            "--focus", options.focus,
            "Control that the keyboard works on, \"Band 1 Threshold\"; a wrong name lists the nearest")
        ->type_name("CONTROL");
    addPlace(command, "--point", options.point, "Rest the mouse there until a tool tip shows");
    addPlace(command, "--press", options.press, "Hold the left button down there");
    return command;
}

} // namespace App
