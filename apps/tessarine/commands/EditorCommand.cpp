#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <memory>

#include "apps/tessarine/commands/Commands.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/console/Interrupt.h"
#include "apps/tessarine/console/Progress.h"
#include "apps/tessarine/editor/EditorControls.h"
#include "apps/tessarine/editor/EditorScreen.h"
#include "apps/tessarine/effect/Assignment.h"
#include "apps/tessarine/effect/ChunkFile.h"
#include "apps/tessarine/effect/CutoffCheck.h"
#include "apps/tessarine/files/AudioReader.h"
#include "apps/tessarine/files/TemporaryFile.h"

namespace App {

namespace {

constexpr uint32_t kBlockFrames = 512;
constexpr uint32_t kUsualRate = 44100; // Hz, without a recording
constexpr uint32_t kTipMs = 2200; // a mouse at rest gets its tool tip within that; a focus mark lasts longer
constexpr uint32_t kSettleMs = 100; // some ticks, in which all that moves has moved

/// Frames to play: up to the moment of the picture.
uint64_t framesToPlay(const EditorOptions &options, const AudioReader &reader)
{
    const double rate = reader.rate(), length = static_cast<double>(reader.frames()) / rate;
    if (options.at && *options.at > length)
        throw Failure(fmt::format("{} has no moment {:g} s, it ends at {:.2f} s; give --at up to that",
                                  options.in.string(), *options.at, length));
    const double moment = options.at.value_or(EditorOptions::kUsualMoment) * rate;
    return std::min(static_cast<uint64_t>(std::llround(moment)), reader.frames());
}

/// Plays a recording to the effect, as fast as it can, while the screen's clock runs with the sound.
class Player {
public:
    Player(AudioReader &from, EffectHost &effect, EditorScreen &to)
        : reader(from), host(effect), screen(to), interleaved(size_t{kBlockFrames} * reader.channels())
    {
        for (auto &channel : channels) channel.resize(kBlockFrames);
    }

    void playTo(uint64_t end, Progress &progress)
    {
        while (played < end) {
            stopIfInterrupted();
            const auto frames = static_cast<uint32_t>(std::min<uint64_t>(kBlockFrames, end - played));
            playBlock(frames);
            played += frames;
            const uint64_t now = played * 1000 / reader.rate();
            screen.wait(static_cast<uint32_t>(now - shownMs));
            shownMs = now;
            progress.show(played);
        }
    }

private:
    void playBlock(uint32_t frames)
    {
        reader.read(interleaved.data(), frames);
        const uint32_t count = reader.channels();
        for (uint32_t c = 0; c < count; ++c) {
            for (uint32_t i = 0; i < frames; ++i) channels[c][i] = interleaved[size_t{i} * count + c];
        }
        float *const pointers[] = {channels[0].data(), channels[1].data()};
        host.process(pointers, pointers, frames);
    }

    AudioReader &reader;
    EffectHost &host;
    EditorScreen &screen;
    std::vector<float> interleaved, channels[2]; // the second stays silent in mono
    uint64_t played = 0;                         // frames
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

} // namespace

void run(const EditorOptions &options)
{
    if (!options.focus.empty()) findEditorControl(options.focus); // a wrong name costs no playing
    std::unique_ptr<AudioReader> reader;
    if (!options.in.empty()) reader = std::make_unique<AudioReader>(options.in);
    TemporaryFile file(options.png);

    EditorScreen screen(options.language);
    EffectHost host({.rate = reader ? reader->rate() : kUsualRate,
                     .channels = reader ? reader->channels() : 2,
                     .blockFrames = kBlockFrames});
    if (!options.chunk.empty()) loadChunk(host, options.chunk);
    applySettings(host, options.settings);
    requireAscendingCutoffs(*host.plugin().transformHandle().crossOver());
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

} // namespace App
