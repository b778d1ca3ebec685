#include "tests/apps/Sandbox.h"

#include <gmock/gmock.h>

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

/// A setting of every kind, some that hosts see and some that they do not.
const std::string kSettings =
    " --set 'Band 1 Comp Threshold=-31.7' --set 'Band 1 Ratio=3.3' --set 'Crossover Mid Cutoff=1234'"
    " --set 'Crossover Band 4 Mute=on' --set 'Limiter Ratio=7' --set Gain=2.9";

class ChunkFiles : public Sandbox {
protected:
    /// The bytes of in.wav rendered with these options.
    std::string rendered(const std::string &options) const
    {
        succeed("render in.wav out.wav" + options);
        return readBytes("out.wav");
    }
};

TEST_F(ChunkFiles, PrintShowsTheSavedValuesAndNoOthers)
{
    succeed("chunk a.chunk" + kSettings);
    const std::string out = succeed("chunk --print a.chunk");
    EXPECT_THAT(out, ContainsRegex("Band 1 Comp Threshold +-31.70  dB\n"));
    EXPECT_THAT(out, ContainsRegex("Crossover Band 4 Mute +on\n"));
    EXPECT_THAT(out, ContainsRegex("Limiter Ratio +7.00  x:1\n"));
    EXPECT_THAT(out, ContainsRegex("Band 4 Spectrum Overlap +5\n"));
    EXPECT_THAT(out, Not(HasSubstr("Global")));
}

TEST_F(ChunkFiles, RenderTheSameBytesAsTheSettingsInThem)
{
    write("in.wav", kWavFloat, 48000, Signals::noise(3, 20000, -6.0));
    succeed("chunk a.chunk" + kSettings);
    const std::string expected = rendered(kSettings);
    EXPECT_NE(rendered(""), expected);
    EXPECT_EQ(expected, rendered(" --chunk a.chunk"));
    EXPECT_EQ(rendered(kSettings + " --set Gain=-4"), rendered(" --set Gain=-4 --chunk a.chunk"));
}

TEST_F(ChunkFiles, CutShortAreRefused)
{
    succeed("chunk whole.chunk");
    const std::string whole = readBytes("whole.chunk");
    for (const size_t length : {size_t{0}, size_t{3}, whole.size() - 9, whole.size() - 1}) {
        writeText("cut.chunk", whole.substr(0, length));
        const Program::Outcome outcome = run("chunk --print cut.chunk");
        EXPECT_EQ(1, outcome.exitCode) << length;
        EXPECT_EQ("", outcome.out);
        EXPECT_THAT(outcome.err, HasSubstr("cut.chunk is damaged or no chunk of this effect"));
    }
}

} // namespace
