#include <algorithm>
#include <cmath>
#include <fmt/ranges.h>

#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Progress.h"
#include "apps/tessarine/editor/EditorScreen.h"
#include "apps/tessarine/effect/EffectSetup.h"
#include "apps/tessarine/files/Block.h"
#include "apps/tessarine/files/TemporaryFile.h"
#include "host/VSTEditor.h"

namespace App {

namespace {

constexpr uint32_t kBlockFrames = 512;
constexpr uint32_t kUsualRate = 44100; // Hz, without a recording
constexpr uint32_t kTipMs = 2200; // a mouse at rest gets its tool tip within that; a focus mark lasts longer
constexpr uint32_t kSettleMs = 100; // some ticks, in which all that moves has moved

constexpr double kUsualMoment = 10.0;           // seconds
constexpr uint32_t kScales[] = {100, 200, 300}; // per cent: every pixel becomes a square of whole pixels

struct EditorOptions {
    std::filesystem::path png;
    std::filesystem::path in; // played before the picture is taken; empty for none
    EffectSetup effect;
    std::optional<double> at; // seconds of the recording; else kUsualMoment or its end
    std::string language = kLanguages[UI::Language::english];
    uint32_t scale = 100;              // per cent
    std::string focus;                 // name of the control with the keyboard; empty for none
    std::optional<Point> point, press; // where the mouse rests, and where its left button goes down
};

/// Frames to play: up to the moment of the picture.
uint64_t framesToPlay(const EditorOptions &options, const AudioReader &reader)
{
    const double rate = reader.rate(), length = static_cast<double>(reader.frames()) / rate;
    if (options.at && *options.at > length)
        throw Failure(fmt::format("{} has no moment {:g} s, it ends at {:.2f} s; give --at up to that",
                                  options.in.string(), *options.at, length));
    const double moment = options.at.value_or(kUsualMoment) * rate;
    return std::min(static_cast<uint64_t>(std::llround(moment)), reader.frames());
}

/// Plays a recording to the effect, as fast as it can, while the screen's clock runs with the sound.
class Player {
public:
    Player(AudioReader &from, EffectHost &effect, EditorScreen &to)
        : reader(from), host(effect), screen(to), block(reader.channels(), kBlockFrames)
    {
    }

    void playTo(uint64_t end, Progress &progress)
    {
        while (played < end) {
            const auto frames = static_cast<uint32_t>(std::min<uint64_t>(kBlockFrames, end - played));
            block.read(reader, frames);
            block.separate(frames);
            host.process(block.sides, block.sides, frames);
            played += frames;
            const uint64_t now = played * 1000 / reader.rate();
            screen.wait(static_cast<uint32_t>(now - shownMs));
            shownMs = now;
            progress.show(played);
        }
    }

private:
    AudioReader &reader;
    EffectHost &host;
    EditorScreen &screen;
    Block block;
    uint64_t played = 0; // frames
    uint64_t shownMs = 0;
};

/// What the person does some time before the picture.
void settleDown(const EditorOptions &options, EffectHost &host, EditorScreen &screen)
{
    if (!options.focus.empty()) screen.focus(host, findEditorControl(options.focus));
    if (options.point) screen.moveTo(*options.point);
}

void playUntilPicture(const EditorOptions &options, AudioReader &reader, EffectHost &host,
                      EditorScreen &screen)
{
    const uint64_t end = framesToPlay(options, reader);
    const uint64_t rest = uint64_t{reader.rate()} * kTipMs / 1000;
    Player player(reader, host, screen);
    Progress progress(end, reader.rate());
    player.playTo(end - std::min(rest, end), progress);
    settleDown(options, host, screen);
    if (end < rest)
        screen.wait(static_cast<uint32_t>((rest - end) * 1000 / reader.rate())); // before the sound
    player.playTo(end, progress);
}

void drawEditor(const EditorOptions &options)
{
    if (!options.focus.empty()) findEditorControl(options.focus); // a wrong name costs no playing
    std::unique_ptr<AudioReader> reader;
    if (!options.in.empty()) reader = std::make_unique<AudioReader>(options.in);
    TemporaryFile file(options.png);

    EditorScreen screen(options.language);
    const std::unique_ptr<EffectHost> effect = makeEffect({.rate = reader ? reader->rate() : kUsualRate,
                                                           .channels = reader ? reader->channels() : 2,
                                                           .blockFrames = kBlockFrames},
                                                          options.effect);
    EffectHost &host = *effect;
    host.start();
    screen.open(host);
    if (reader) {
        playUntilPicture(options, *reader, host, screen);
    } else {
        settleDown(options, host, screen);
        screen.wait(options.point ? kTipMs : kSettleMs);
    }
    if (options.press) screen.press(*options.press);

    file.write(screen.picture(options.scale / 100));
    file.commit();
    fmt::print("Picture  {}\n", options.png.string());
}

void addPlace(CLI::App *command, const char *option, std::optional<Point> &place, const char *help)
{
    const auto read = [&place, option](const std::string &text) {
        const size_t comma = std::min(text.find(','), text.size());
        const auto x = readNumber<int32_t>(std::string_view(text).substr(0, comma));
        const auto y = readNumber<int32_t>(std::string_view(text).substr(std::min(comma + 1, text.size())));
        const Rect window = Rect::at({}, VSTEditor::kWidth, VSTEditor::kHeight);
        if (!x || !y || !window.contains({*x, *y}))
            throw CLI::ValidationError(
                option, fmt::format("there is no pixel '{}' in the editor; give X,Y from 0,0 to {},{}", text,
                                    window.right, window.bottom));
        place = Point{*x, *y};
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

void addEditor(CLI::App &app)
{
    const auto options = std::make_shared<EditorOptions>();
    CLI::App *const command =
        app.add_subcommand("editor", "Draw the editor as it looks while a recording plays");
    command->add_option("--png", options->png, "Picture to write")->required();
    CLI::Option *const in = command->add_option(
        "--in", options->in, "Recording to play; without it the editor has just been opened");
    command
        ->add_option(
            "--at", options->at,
            fmt::format("Moment of the recording at which the picture is taken; without it {:g}, or its "
                        "end if that comes first",
                        kUsualMoment))
        ->type_name("SECONDS")
        ->check(checkMoment, "")
        ->needs(in);
    addChunkFile(command, options->effect.chunk);
    command
        ->add_option("--language", options->language,
                     fmt::format("{} or {}",
                                 fmt::join(std::begin(kLanguages), std::end(kLanguages) - 1, ", "),
                                 std::end(kLanguages)[-1]))
        ->type_name("LANGUAGE")
        ->check(oneOf("language", kLanguages), "");
    command->add_option("--scale", options->scale, "Size in per cent: 100, 200 or 300")
        ->type_name("PERCENT")
        ->check(oneOf("scale", kScales), "");
    command
        ->add_option(
            "--focus", options->focus,
            "Control that the keyboard works on, \"Band 1 Threshold\"; a wrong name lists the nearest")
        ->type_name("CONTROL");
    addPlace(command, "--point", options->point, "Rest the mouse there until a tool tip shows");
    addPlace(command, "--press", options->press, "Hold the left button down there");
    addSettings(command, options->effect.settings);
    command->callback([options] { drawEditor(*options); });
}

} // namespace App
