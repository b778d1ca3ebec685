#include "tests/apps/Sandbox.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

using Commands = Sandbox;

TEST_F(Commands, ResponseMeasuresRippleAndDrawsPicture)
{
    succeed("response --png a.png");
    EXPECT_THAT(readBytes("a.png"), StartsWith("\x89PNG\r\n"));
    EXPECT_THAT(succeed("response --png b.png --set 'Crossover Band 2 Mute=on' --set 'Band 1 Gain=6'"),
                ContainsRegex("to \\+(5.99|6.00) dB at 20 Hz"));
}

TEST_F(Commands, HelpAndVersionGoToStandardOutput)
{
    EXPECT_THAT(succeed("--version"), ContainsRegex("^tessarine [0-9]+\\.[0-9]+\\.[0-9]+\n$"));
    EXPECT_THAT(succeed("--help"), AllOf(HasSubstr("render"), HasSubstr("response")));
    EXPECT_THAT(succeed("render --help"), HasSubstr("--no-compensate"));
    for (const std::string command : {"render", "params", "latency", "response", "chunk", "editor"}) {
        const std::string help = succeed(command + " --help");
        EXPECT_THAT(help,
                    AllOf(HasSubstr("Example"), HasSubstr("Exit status: 0 success"), Not(HasSubstr("TEXT"))));
    }
}

TEST_F(Commands, AcceptUnitsAndSpectrumSettingsByTheirListedNames)
{
    EXPECT_EQ(succeed("latency --rate 48000"), succeed("latency --rate '48 kHz'"));
    succeed("chunk a.chunk --set 'Band 1 Ratio=3:1' --set 'Crossover Mid Cutoff=1.2 kHz' --set 'Limiter "
            "Release=0.1 s' --set 'Band 2 Spectrum Overlap=3'");
    const std::string printed = succeed("chunk --print a.chunk");
    for (const char *row : {"Band 1 Ratio +3.00", "Crossover Mid Cutoff +1200.00", "Limiter Release +100.00",
                            "Band 2 Spectrum Overlap +3"})
        EXPECT_THAT(printed, ContainsRegex(row));
    write("in.wav", kWav16, 44100, Signals::noise(3, 30000, -20.0));
    EXPECT_THAT(succeed("render in.wav out.wav --loudness -24LUFS --true-peak '-1 dBTP'"),
                ContainsRegex("-24.00 LUFS"));
}

TEST_F(Commands, ChunkPrintsOnlySavedValuesAndRendersLikeItsSettings)
{
    // every kind of parameter, both visible to hosts and hidden
    const std::string settings =
        " --set 'Band 1 Comp Threshold=-31.7' --set 'Band 1 Ratio=3.3' --set 'Crossover Mid Cutoff=1234'"
        " --set 'Crossover Band 4 Mute=on' --set 'Limiter Ratio=7' --set Gain=2.9";
    succeed("chunk a.chunk" + settings);
    const std::string printed = succeed("chunk --print a.chunk");
    EXPECT_THAT(printed, ContainsRegex("Band 1 Comp Threshold +-31.70  dB\n"));
    EXPECT_THAT(printed, ContainsRegex("Crossover Band 4 Mute +on\n"));
    EXPECT_THAT(printed, ContainsRegex("Limiter Ratio +7.00  x:1\n"));
    EXPECT_THAT(printed, ContainsRegex("Band 4 Spectrum Overlap +5\n"));
    EXPECT_THAT(printed, Not(HasSubstr("Global")));

    succeed("chunk a.chunk b.chunk --set Gain=1");
    EXPECT_THAT(succeed("chunk --print b.chunk"),
                AllOf(ContainsRegex("Gain +1.00  dB\n"), ContainsRegex("Ratio +3.30")));

    write("in.wav", kWavFloat, 48000, Signals::noise(3, 20000, -6.0));
    const auto rendered = [this](const std::string &options) {
        succeed("render in.wav out.wav" + options);
        return readBytes("out.wav");
    };
    const std::string expected = rendered(settings);
    EXPECT_NE(rendered(""), expected);
    EXPECT_EQ(expected, rendered(" --chunk a.chunk"));
    EXPECT_EQ(rendered(settings + " --set Gain=-4"), rendered(" --set Gain=-4 --chunk a.chunk"));
}

} // namespace
