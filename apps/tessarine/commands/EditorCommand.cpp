#include <algorithm>
#include <cmath>
#include <fmt/ranges.h>

#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Progress.h"
#include "apps/tessarine/editor/EditorScreen.h"
#include "apps/tessarine/effect/EffectPass.h"
#include "apps/tessarine/effect/EffectSetup.h"
#include "apps/tessarine/files/OutputPath.h"
#include "apps/tessarine/files/TemporaryFile.h"
#include "host/VSTEditor.h"

namespace App {

namespace {

constexpr uint32_t kBlockFrames = 512;
constexpr uint32_t kUsualRate = 44100; // Hz, if no file is played
constexpr uint32_t kTipMs = 2200;      // longer than a tool tip's delay, shorter than a focus mark's display
constexpr uint32_t kSettleMs = 100;    // several timer ticks, enough for every control to be drawn

constexpr double kUsualMoment = 10.0;           // seconds
constexpr uint32_t kScales[] = {100, 200, 300}; // per cent; whole factors keep the pixels sharp

struct EditorOptions {
    std::filesystem::path png;
    std::filesystem::path in; // played before the picture is taken; empty for none
    EffectSetup effect;
    std::optional<double> at; // seconds from the file's start; default: kUsualMoment or a shorter file's end
    std::string language = kLanguages[UI::Language::english];
    uint32_t scale = 100;              // per cent
    std::string focus;                 // name of the control with keyboard focus; empty for none
    std::optional<Point> point, press; // where the mouse rests and where its left button is pressed
};

/// Number of frames to play before the picture is taken.
/// Errors  Failure if --at is after the end of the file
uint64_t framesToPlay(const EditorOptions &options, const AudioReader &reader)
{
    const double rate = reader.rate(), length = static_cast<double>(reader.frames()) / rate;
    if (options.at && *options.at > length)
        throw Failure(fmt::format("--at {:g} is after the end of {} ({:.2f} s); give an earlier time",
                                  *options.at, options.in.string(), length));
    const double moment = options.at.value_or(kUsualMoment) * rate;
    return std::min(static_cast<uint64_t>(std::llround(moment)), reader.frames());
}

/// Plays an audio file through the effect faster than real time and advances the screen's clock with it.
class Player {
public:
    Player(AudioReader &from, EffectHost &effect, EditorScreen &to)
        : reader(from), screen(to), pass(from, effect, kBlockFrames)
    {
    }

    void playTo(uint64_t end, Progress &progress)
    {
        while (played < end) {
            const auto frames = static_cast<uint32_t>(std::min<uint64_t>(kBlockFrames, end - played));
            pass.run(frames, chunk);
            played += frames;
            const uint64_t now = played * 1000 / reader.rate();
            screen.wait(static_cast<uint32_t>(now - shownMs));
            shownMs = now;
            progress.show(played);
        }
    }

private:
    AudioReader &reader;
    EditorScreen &screen;
    EffectPass pass;
    Chunk chunk;
    uint64_t played = 0; // frames
    uint64_t shownMs = 0;
};

/// Moves the keyboard focus and the mouse, kTipMs before the picture is taken.
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
        screen.wait(static_cast<uint32_t>((rest - end) * 1000 / reader.rate())); // less than kTipMs is played
    player.playTo(end, progress);
}

void drawEditor(const EditorOptions &options)
{
    requireDistinct({{"input", options.in}, {"chunk", options.effect.chunk}}, {{"picture", options.png}});
    if (!options.focus.empty()) findEditorControl(options.focus); // refuse an unknown name before playing
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
                option, fmt::format("'{}' is not a pixel of the editor; give X,Y from 0,0 to {},{}", text,
                                    window.right, window.bottom));
        place = Point{*x, *y};
    };
    command->add_option_function<std::string>(option, read, help)->type_name("X,Y");
}

/// Checks a time and leaves its seconds in `text`, without a unit.
std::string readMoment(std::string &text)
{
    const auto seconds = readQuantity(text, "s");
    if (!seconds || *seconds < 0.0)
        return fmt::format("'{}' is not a valid time; give seconds from the start of the file", text);
    text = fmt::format("{}", *seconds);
    return {};
}

/// Makes a validator that accepts one of `words` in any case, also with `unit` after it, and leaves the word in
/// the text. `what` names the option's value in the error message.
template <class Words>
CLI::Validator oneOf(const char *what, const Words &words, const char *unit = "")
{
    const auto find = [what, &words, unit](std::string &text) {
        std::string all;
        for (const auto &word : words) {
            std::string known = fmt::format("{}", word);
            if (sameName(text, known) || sameName(text, known + unit) || sameName(text, known + " " + unit)) {
                text = std::move(known);
                return std::string();
            }
            all += (all.empty() ? "" : ", ") + known;
        }
        return fmt::format("unknown {} '{}'; choose one of {}", what, text, all);
    };
    return CLI::Validator(find, "");
}

} // namespace

void addEditor(CLI::App &app)
{
    const auto options = std::make_shared<EditorOptions>();
    CLI::App *const command =
        app.add_subcommand("editor", "Draw the editor as it looks while an audio file plays");
    command->add_option("--png", options->png, "PNG picture to write")
        ->type_name("FILE")
        ->required()
        ->check(checkPictureName, "");
    CLI::Option *const in =
        command
            ->add_option("--in", options->in, "Audio file to play (default: none, the editor as just opened)")
            ->type_name("FILE");
    command
        ->add_option(
            "--at", options->at,
            fmt::format("Time in the file at which the picture is taken (default: {:g} s, or the end of a "
                        "shorter file)",
                        kUsualMoment))
        ->type_name("SECONDS")
        ->transform(CLI::Validator(readMoment, ""))
        ->needs(in);
    addChunkFile(command, options->effect.chunk);
    command
        ->add_option("--language", options->language,
                     fmt::format("Language of the editor: {} or {} (default: {})",
                                 fmt::join(std::begin(kLanguages), std::end(kLanguages) - 1, ", "),
                                 std::end(kLanguages)[-1], options->language))
        ->type_name("LANGUAGE")
        ->transform(oneOf("language", kLanguages));
    command->add_option("--scale", options->scale, "Size in per cent: 100, 200 or 300 (default: 100)")
        ->type_name("PERCENT")
        ->transform(oneOf("scale", kScales, "%"));
    command
        ->add_option(
            "--focus", options->focus,
            "Parameter whose control has the keyboard focus, for example \"Band 1 Ratio\"; an unknown name "
            "lists similar ones (default: none)")
        ->type_name("NAME");
    addPlace(command, "--point", options->point,
             "Pixel at which the mouse rests until a tool tip appears (default: none)");
    addPlace(command, "--press", options->press,
             "Pixel at which the left mouse button is held down (default: none)");
    addSettings(command, options->effect.settings);
    command->callback([options] { drawEditor(*options); });
    endHelp(command, {"tessarine editor --png editor.png --in song.flac --at 71 --scale 200%",
                      "tessarine editor --png editor.png --language german --focus \"Band 2 Ratio\""});
}

} // namespace App
