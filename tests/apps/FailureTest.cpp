#include "tests/apps/Sandbox.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

struct Refusal {
    const char *name;
    std::vector<std::string> arguments;
    int exitCode;
    const char *sentence; // a part of it
};

void PrintTo(const Refusal &refusal, std::ostream *out) { *out << refusal.name; }

/// A folder with one of everything that cannot be rendered, and "good.wav".
class Failures : public Sandbox, public testing::WithParamInterface<Refusal> {
protected:
    Failures()
    {
        write("good.wav", kWav16, 44100, Signals::noise(1, 4000, -20.0));
        write("cut.wav", kWav16, 44100, Signals::noise(1, 4000, -20.0));
        write("cut.aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 44100, Signals::noise(1, 4000, -20.0));
        write("cut.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 44100, Signals::noise(1, 40000, -20.0));
        for (const char *name : {"cut.wav", "cut.aiff", "cut.flac"})
            std::filesystem::resize_file(pathOf(name), std::filesystem::file_size(pathOf(name)) / 2);
        write("header.wav", kWav16, 44100, Signals::noise(1, 100, -20.0));
        std::filesystem::resize_file(pathOf("header.wav"), 30);
        writeInterleaved("empty.wav", kWav16, 44100, 2, {});
        writeInterleaved("six.wav", kWav16, 44100, 6, std::vector<float>(6000, 0.1f));
        writeText("notes.wav", "not a sound at all");
        writeText("large.chunk", "");
        std::filesystem::resize_file(pathOf("large.chunk"), (1 << 20) + 1);
        std::filesystem::create_symlink("/dev/full", pathOf("device.wav"));
        std::filesystem::create_directory(pathOf("folder"));
        std::filesystem::create_directory(pathOf("folder.wav"));
    }
};

TEST_P(Failures, SaysOnePlainSentenceAndLeavesNothing)
{
    const std::set<std::string> before = contents();
    const Program::Outcome outcome = run(GetParam().arguments);
    EXPECT_EQ(GetParam().exitCode, outcome.exitCode);
    EXPECT_EQ("", outcome.out);
    EXPECT_THAT(outcome.err,
                AllOf(StartsWith("tessarine: "), HasSubstr(GetParam().sentence), EndsWith("\n")));
    EXPECT_EQ(1, std::count(outcome.err.begin(), outcome.err.end(), '\n'));
    EXPECT_EQ(before, contents());
}

Refusal input(const char *name, const char *sentence)
{
    return {name, {"render", name, "out.wav"}, 1, sentence};
}

Refusal output(const char *name, const char *out, const char *sentence)
{
    return {name, {"render", "good.wav", out}, 1, sentence};
}

Refusal setting(const char *assignment, int exitCode, const char *sentence)
{
    return {assignment, {"render", "good.wav", "out.wav", "--set", assignment}, exitCode, sentence};
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, Failures,
    testing::Values(input("absent.wav", "absent.wav does not exist"), input("folder", "folder is a folder"),
                    input("cut.wav", "cut.wav is cut short"), input("cut.aiff", "cut.aiff is cut short"),
                    input("cut.flac", "cut.flac is damaged or cut short"), input("header.wav", "header.wav"),
                    input("empty.wav", "0 frames"), input("six.wav", "has 6 channels"),
                    input("notes.wav", "cannot be read as sound"), input("/dev/null", "not a plain file")));

INSTANTIATE_TEST_SUITE_P(
    Outputs, Failures,
    testing::Values(output("Folder", "folder.wav", "folder.wav is a folder"),
                    output("NoFolder", "absent/out.wav", "absent does not exist"),
                    output("Device", "device.wav", "not a plain file"),
                    output("NoEnding", "out", "does not end in the name of a sound format"),
                    output("StrangeEnding", "out.txt", ".flac"),
                    Refusal{"ReportOverOutput",
                            {"render", "good.wav", "out.png", "--report", "out.png"},
                            1,
                            "the report would overwrite the output out.png"},
                    Refusal{"ReportNowhere",
                            {"render", "good.wav", "out.wav", "--report", "absent/r.png"},
                            1,
                            "absent does not exist"}));

INSTANTIATE_TEST_SUITE_P(Settings, Failures,
                         testing::Values(setting("Band 1 Ration=4", 1, "'Band 1 Ratio'"),
                                         setting("comp threshold=-3", 1, "'Band 1 Comp Threshold'"),
                                         setting("Band 1 Ratio=31", 1, "it takes 1 to 30 x:1"),
                                         setting("Band 1 Ratio=0.5", 1, "it takes 1 to 30 x:1"),
                                         setting("Band 1 Ratio=nan", 1, "cannot be 'nan'"),
                                         setting("Band 1 Ratio=4 dB", 1, "cannot be '4 dB'"),
                                         setting("Band 1 Ratio=", 1, "cannot be ''"),
                                         setting("Limiter Bypass=maybe", 1, "it takes off or on"),
                                         setting("Global: Preset Change Mode=1.5", 1, "it takes 0 to 2"),
                                         setting("Crossover Low Cutoff=5000", 1, "ascending order"),
                                         setting("Band 1 Ratio", 2, "write NAME=VALUE")));

Refusal chunk(const char *name, const char *file, const char *sentence)
{
    return {name, {"render", "good.wav", "out.wav", "--chunk", file}, 1, sentence};
}

INSTANTIATE_TEST_SUITE_P(
    Chunks, Failures,
    testing::Values(
        chunk("Absent", "absent.chunk", "absent.chunk does not exist"),
        chunk("Folder", "folder", "folder is a folder; name a chunk file"),
        chunk("Foreign", "notes.wav", "notes.wav is damaged or no chunk of this effect"),
        chunk("Large", "large.chunk", "large.chunk is larger than 1 MiB"),
        chunk("Overwritten", "./out.wav", "the output would overwrite the chunk ./out.wav"),
        Refusal{"PrintForeign", {"chunk", "--print", "good.wav"}, 1, "good.wav is damaged or no chunk"},
        Refusal{"Nowhere", {"chunk", "absent/a.chunk"}, 1, "absent does not exist"},
        Refusal{"OverFolder", {"chunk", "folder"}, 1, "folder is a folder"},
        Refusal{"Unsaved", {"chunk", "a", "--set", "Global Bypass=on"}, 1, "'Global Bypass' is not kept"},
        Refusal{"Cutoffs", {"chunk", "a", "--set", "Crossover Low Cutoff=5000"}, 1, "ascending order"},
        Refusal{"PrintAndSet", {"chunk", "a", "--print", "--set", "Gain=1"}, 2, "--print excludes --set"},
        Refusal{
            "NoName", {"render", "good.wav", "out.wav", "--chunk", ""}, 2, "the name of the chunk is empty"},
        Refusal{"NoFile", {"chunk"}, 2, "FILE is required"}));

INSTANTIATE_TEST_SUITE_P(
    Usage, Failures,
    testing::Values(Refusal{"Nothing", {}, 2, "a command is missing"},
                    Refusal{"UnknownCommand", {"paint"}, 2, "there is no command 'paint'"},
                    Refusal{"NoOutput", {"render", "good.wav"}, 2, "OUT is required"},
                    Refusal{"UnknownOption", {"render", "good.wav", "out.wav", "--loud"}, 2, "--loud"},
                    Refusal{"NoBlock", {"render", "good.wav", "out.wav", "--block", "0"}, 2, "--block"},
                    Refusal{
                        "StrangeReport", {"render", "good.wav", "out.wav", "--report", "r.pdf"}, 2, ".html"},
                    Refusal{"NoRate", {"latency", "--rate", "0"}, 2, "--rate"},
                    Refusal{"NoPicture", {"response"}, 2, "--png is required"}));

using Trouble = Sandbox;

TEST_F(Trouble, FileThatMayNotGrowIsToldAndRemoved)
{
    write("in.wav", kWav16, 44100, Signals::noise(1, 100000, -20.0));
    for (const char *out : {"out.wav", "out.flac", "out.ogg"}) {
        SCOPED_TRACE(out);
        const Program::Outcome outcome = Program(folder, {"render", "in.wav", out}, 50000).wait();
        EXPECT_EQ(1, outcome.exitCode);
        EXPECT_THAT(outcome.err, HasSubstr(std::string(out) + " was not written"));
        EXPECT_EQ(std::set<std::string>{"in.wav"}, contents());
    }
}

TEST_F(Trouble, FullDiskIsToldAndNothingStaysOnIt)
{
    if (std::system("unshare -m true 2>/dev/null") != 0) GTEST_SKIP() << "mounting needs root";
    write("in.wav", kWav16, 44100, Signals::noise(1, 100000, -20.0));
    std::filesystem::create_directory(pathOf("disk"));
    for (const char *ending : {"wav", "flac", "ogg"}) {
        SCOPED_TRACE(ending);
        const std::string script = "cd '" + folder.string() +
                                   "' && mount -t tmpfs -o size=64k none disk || exit 99\n"
                                   "echo old > disk/out." +
                                   ending + "\n" TESSARINE_PROGRAM " render in.wav disk/out." + ending +
                                   " 2> message; code=$?; ls -A disk > left; cat disk/out." + ending +
                                   " >> left; exit $code";
        writeText("script", script);
        const int status = std::system(("unshare -m sh '" + pathOf("script") + "'").c_str());
        if (WEXITSTATUS(status) == 99) GTEST_SKIP() << "no tmpfs here";
        EXPECT_EQ(1, WEXITSTATUS(status));
        EXPECT_THAT(readBytes("message"), HasSubstr("the disk is full"));
        EXPECT_EQ(std::string("out.") + ending + "\nold\n", readBytes("left"));
    }
}

TEST_F(Trouble, FolderWithoutRightToWriteIsTold)
{
    const Program::Outcome outcome = run({"response", "--png", "/proc/picture.png"});
    EXPECT_EQ(1, outcome.exitCode);
    EXPECT_THAT(outcome.err, HasSubstr("/proc/picture.png cannot be written"));
}

TEST_F(Trouble, InterruptLeavesTheOldFileAndNothingElse)
{
    write("in.wav", kWav16, 8000, Signals::noise(1, 8000 * 120, -20.0));
    writeText("out.wav", "old");
    Program program(folder, {"render", "in.wav", "out.wav", "--block", "1"});
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (contents().size() < 3 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    program.send(SIGINT);
    const Program::Outcome outcome = program.wait();
    EXPECT_EQ(SIGINT, outcome.signal);
    EXPECT_THAT(outcome.err, HasSubstr("stopped"));
    EXPECT_EQ((std::set<std::string>{"in.wav", "out.wav"}), contents());
    EXPECT_EQ("old", readBytes("out.wav"));
}

} // namespace
