#include "tests/apps/Sandbox.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <thread>

#include <gmock/gmock.h>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Refusal {
    const char *line;
    int exitCode;
    const char *message; // a part of the message
};

#define NAME_50 "abcdefghijabcdefghijabcdefghijabcdefghijabcdefghij"
#define NAME_300 NAME_50 NAME_50 NAME_50 NAME_50 NAME_50 NAME_50

constexpr Refusal kRefusals[] = {
    {"render absent.wav out.wav", 1, "absent.wav does not exist"},
    {"render folder out.wav", 1, "folder is a folder"},
    {"render cut.flac out.wav", 1, "cut.flac is damaged or truncated"},
    {"render empty.wav out.wav", 1, "0 frames"},
    {"render six.wav out.wav", 1, "has 6 channels"},
    {"render notes.wav out.wav", 1, "notes.wav is not a readable audio file"},
    {"render /dev/null out.wav", 1, "not a regular file"},

    {"render good.wav folder.wav", 1, "folder.wav is a folder"},
    {"render good.wav absent/out.wav", 1, "absent does not exist"},
    {"render good.wav device.wav", 1, "not a regular file"},
    {"render good.wav out", 1, "does not have the extension of an audio format"},
    {"render good.wav out.txt", 1, ".flac"},
    {"render good.wav out.png --report out.png", 1, "the report would overwrite the output out.png"},
    {"render good.wav out.wav --report absent/r.png", 1, "absent does not exist"},
    {"render good.wav out.wav --report r.pdf", 2, ".html"},
    {"response --png /proc/picture.png", 1, "/proc/picture.png cannot be written"},

    {"render good.wav out.wav --set 'Band 1 Ration=4'", 1, "'Band 1 Ratio'"},
    {"render good.wav out.wav --set 'Band 1 Ratio=31'", 1, "give a value from 1 to 30 x:1"},
    {"render good.wav out.wav --set 'Band 1 Ratio=nan'", 1, "cannot be 'nan'"},
    {"render good.wav out.wav --set 'Limiter Bypass=maybe'", 1, "give off or on"},
    {"render good.wav out.wav --set 'Global: Preset Change Mode=1.5'", 1, "give a whole number from 0 to 2"},
    {"render good.wav out.wav --set 'Crossover Low Cutoff=5000'", 1, "ascending order"},
    {"render good.wav out.wav --set 'Band 1 Ratio'", 2, "write NAME=VALUE"},

    {"render good.wav out.wav --chunk absent.chunk", 1, "absent.chunk does not exist"},
    {"render good.wav out.wav --chunk folder", 1, "folder is a folder; name a chunk file"},
    {"render good.wav out.wav --chunk notes.wav", 1, "notes.wav is damaged or not a chunk of this effect"},
    {"render good.wav out.wav --chunk large.chunk", 1, "large.chunk is larger than 1 MiB"},
    {"render good.wav out.wav --chunk ./out.wav", 1, "the output would overwrite the chunk ./out.wav"},
    {"render good.wav out.wav --chunk r.png --report r.png", 1, "the report would overwrite the chunk r.png"},
    {"render good.wav out.wav --chunk d.wav --dry d.wav", 1, "the dry file would overwrite the chunk d.wav"},
    {"render good.wav out.wav --chunk ''", 2, "the name of the chunk is empty"},
    {"chunk a --set 'Global Bypass=on'", 1, "'Global Bypass' is not saved in chunks"},
    {"render good.wav out.wav --loudness -14 --chunk gain.chunk", 1, "gain.chunk sets \"Gain=3.00\""},
    {"render " NAME_300 " out.wav", 1, "cannot be read: File name too long"},
    {"render good.wav " NAME_300 ".wav", 1, "cannot be written: File name too long"},
    {"render good.wav out.wav --chunk " NAME_300, 1, "cannot be read: File name too long"},
    {"latency --rate 0.5k", 2, "the sample rate cannot be '0.5k'"},
    {"latency --rate 1000.5", 2, "not a whole number"},
    {"chunk a --print --set Gain=1", 2, "--print excludes --set"},

    {"render good.wav good.wav", 1, "the output would overwrite the input good.wav"},
    {"render good.wav link.wav", 1, "the output would overwrite the input good.wav"},
    {"editor --png gain.chunk --chunk gain.chunk", 2, "does not end in .png"},
    {"editor --png wav.png --in wav.png", 1, "the picture would overwrite the input wav.png"},
    {"response --png good.wav", 2, "does not end in .png"},
    {"chunk good.wav --set Gain=1", 1, "good.wav exists and is not a chunk"},
    {"chunk gain.chunk good.wav", 1, "good.wav exists and is not a chunk"},
    {"chunk gain.chunk", 1, "gain.chunk exists and would be reset to the defaults"},
    {"render good.wav protected.wav", 1, "protected.wav is write-protected"},

    {"render good.wav out.wav --dry ./out.wav", 1, "the dry file would overwrite the output out.wav"},
    {"render good.wav out.wav --dry good.wav", 1, "the dry file would overwrite the input good.wav"},
    {"render good.wav out.wav --dry r.png --report r.png", 1,
     "the report would overwrite the dry file r.png"},
    {"render good.wav out.wav --dry absent/dry.wav", 1, "absent does not exist"},

    {"render good.wav out.wav --loudness nan", 2, "the loudness cannot be 'nan'; give a number"},
    {"render good.wav out.wav --loudness -71", 2, "the loudness cannot be '-71'"},
    {"render good.wav out.wav --loudness -14 --set ' gain = 3'", 1, "--loudness chooses 'Gain' itself"},
    {"render good.wav out.wav --loudness -14 --set 'Global Bypass=on'", 1, "'Global Bypass'"},
    {"render good.wav out.wav --loudness -2 --true-peak -3", 1,
     "-2 LUFS is out of reach: with a true peak of"},
    {"render good.wav out.wav --loudness -2 --set 'Limiter Brickwall Mode=off'", 1,
     "or leave out 'Limiter Brickwall Mode=off'"},
    {"render good.wav out.wav --loudness -69", 1, "-69 LUFS is out of reach: the minimum is"},
    {"render silent.wav out.wav --loudness -14", 1, "the loudness cannot be measured"},

    {"editor --png e.png --at 1", 2, "--at requires --in"},
    {"editor --png e.png --in good.wav --at -1", 2, "'-1' is not a valid time"},
    {"editor --png e.png --in good.wav --at 3.5", 1, "--at 3.5 is after the end of good.wav (1.00 s)"},
    {"editor --png e.png --focus 'Band 1 Tresh'", 1, "similar names are 'Band 1 "},
    {"editor --png e.png --language klingon", 2, "choose one of english, japanese"},
    {"editor --png e.png --point 547,3", 2, "from 0,0 to 546,487"},

    {"", 2, "no command given"},
    {"paint", 2, "unknown command 'paint'"},
    {"render good.wav", 2, "OUT is required"},
    {"render good.wav out.wav --block 0", 2, "--block"},
};

using Failures = Sandbox;

/// The folder contains invalid inputs and outputs of every kind, and the valid file good.wav.
TEST_F(Failures, PrintOneLineAndLeaveNoFile)
{
    const Audio sound = Signals::noise(1, 44100, -20.0);
    write("good.wav", kWav16, 44100, sound);
    write("silent.wav", kWav16, 44100, Signals::silence(44100));
    write("cut.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 44100, sound);
    std::filesystem::resize_file(pathOf("cut.flac"), std::filesystem::file_size(pathOf("cut.flac")) / 2);
    write("empty.wav", kWav16, 44100, {});
    std::string six = readBytes("good.wav"); // declare six channels in the header
    six[22] = 6;
    six[32] = 12;
    writeText("six.wav", six);
    writeText("notes.wav", "not a sound at all");
    succeed("chunk gain.chunk --set Gain=3");
    writeText("large.chunk", "");
    std::filesystem::resize_file(pathOf("large.chunk"), (1 << 20) + 1);
    std::filesystem::create_symlink("/dev/full", pathOf("device.wav"));
    std::filesystem::create_directory(pathOf("folder"));
    std::filesystem::create_directory(pathOf("folder.wav"));

    std::filesystem::create_hard_link(pathOf("good.wav"), pathOf("link.wav"));
    std::filesystem::copy(pathOf("good.wav"), pathOf("wav.png"));
    writeText("protected.wav", "");
    std::filesystem::permissions(pathOf("protected.wav"), std::filesystem::perms::owner_read);

    const std::set<std::string> before = contents();
    for (const auto &[line, exitCode, message] : kRefusals) {
        SCOPED_TRACE(line);
        const Program::Outcome outcome = run(line);
        EXPECT_EQ(exitCode, outcome.exitCode);
        EXPECT_EQ("", outcome.out);
        EXPECT_THAT(outcome.err, AllOf(StartsWith("tessarine: "), HasSubstr(message), EndsWith("\n")));
        EXPECT_EQ(1, std::count(outcome.err.begin(), outcome.err.end(), '\n'));
        EXPECT_EQ(before, contents());
    }
}

using Trouble = Sandbox;

TEST_F(Trouble, UnwritableStandardOutputIsReportedByEveryCommand)
{
    for (const std::string line :
         {"params", "params --all", "latency", "response --png a.png", "chunk a.chunk",
          "chunk a.chunk --print", "editor --png a.png", "render --help", "--version"}) {
        const Program::Outcome outcome = run(line + " >/dev/full");
        EXPECT_EQ(1, outcome.exitCode) << line;
        EXPECT_THAT(outcome.err, HasSubstr("cannot write to standard output: No space left")) << line;
    }
}

TEST_F(Trouble, FileSizeLimitIsReportedAndKeepsTheOldFile)
{
    write("in.wav", kWav16, 44100, Signals::noise(1, 100000, -20.0));
    for (const std::string out : {"out.wav", "out.flac", "out.ogg"}) {
        writeText(out, "old");
        const std::set<std::string> before = contents();
        const Program::Outcome outcome = Program(folder, "render in.wav " + out, 50000).wait();
        EXPECT_EQ(1, outcome.exitCode) << out;
        EXPECT_THAT(outcome.err, HasSubstr(out + " was not written"));
        EXPECT_EQ("old", readBytes(out));
        EXPECT_EQ(before, contents());
    }
}

/// Interrupts at moments spread over the whole run, also while files are replaced.
TEST_F(Trouble, InterruptsReplaceAllFilesOrNone)
{
    constexpr int kMoments = 24;
    const std::map<std::string, std::string> old = {
        {"out.mp3", "old"}, {"dry.wav", "old"}, {"delta.wav", "old"}, {"report.png", "old"}};
    const std::string line =
        "render in.wav out.mp3 --dry dry.wav --delta delta.wav --report report.png --loudness -20";
    write("in.wav", kWav16, 44100, Signals::music(2, 44100, 44100 * 4, -6.0));
    const auto begin = std::chrono::steady_clock::now();
    succeed(line);
    const auto whole = std::chrono::steady_clock::now() - begin;
    const std::set<std::string> names = contents();
    constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};
    for (int moment = 0; moment < kMoments; ++moment) {
        const int signal = kSignals[moment % 4];
        SCOPED_TRACE(testing::Message() << "signal " << signal << " at " << moment << " of " << kMoments);
        for (const auto &[name, text] : old) writeText(name, text);
        Program program(folder, line);
        std::this_thread::sleep_for(whole * moment / kMoments);
        program.send(signal);
        const Program::Outcome outcome = program.wait();
        const auto replaced = std::ranges::count_if(
            old, [this](const auto &file) { return readBytes(file.first) != file.second; });
        EXPECT_EQ(names, contents());
        if (outcome.signal == 0) {
            EXPECT_EQ(0, outcome.exitCode) << outcome.err;
            EXPECT_EQ(4, replaced);
            continue;
        }
        EXPECT_EQ(signal, outcome.signal);
        const bool isDone = outcome.err.find("interrupted when the work was done") != std::string::npos;
        EXPECT_EQ(isDone ? 4 : 0, replaced) << outcome.err;
    }
}

TEST_F(Trouble, LostReaderEndsTheProgramSilentlyWithoutAReport)
{
    write("in.wav", kWav16, 44100, Signals::noise(1, 5000, -20.0));
    EXPECT_EQ("", run("render in.wav out.wav --report a.png | true").err);
    EXPECT_EQ((std::set<std::string>{"in.wav", "out.wav"}), contents());
}

} // namespace
