#include "tests/apps/Sandbox.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Commands = Sandbox;

TEST_F(Commands, ParamsListsEveryHostParameterWithItsRange)
{
    const std::string out = succeed("params");
    EXPECT_THAT(out, ContainsRegex("\n +10  Band 1 Comp Threshold +dB +-60 to 0 +0  0.00\n"));
    EXPECT_THAT(out, ContainsRegex("\n +38  Band 4 Solo +off, on +off  False\n"));
    EXPECT_THAT(out, ContainsRegex("\n +Limiter Ratio +x:1 +1 to 25 +20  20.00\n"));
}

TEST_F(Commands, LatencyTellsThreeNumbers)
{
    EXPECT_THAT(succeed("latency --rate 192000"), AllOf(ContainsRegex("reported to the host +305 samples"),
                                                        ContainsRegex("known by the effect +453 samples"),
                                                        ContainsRegex("measured +453 samples")));
}

TEST_F(Commands, ResponseMeasuresTheRippleAndDraws)
{
    EXPECT_THAT(succeed("response --png a.png"), HasSubstr("-0.26 dB at 2060 Hz to +0.09 dB"));
    EXPECT_THAT(readBytes("a.png"), StartsWith("\x89PNG\r\n"));
    EXPECT_THAT(succeed("response --png b.png --set 'Crossover Band 2 Mute=on' --set 'Band 1 Gain=6'"),
                ContainsRegex("to \\+(5.99|6.00) dB at 20 Hz"));
}

TEST_F(Commands, HelpGoesToStandardOutput)
{
    EXPECT_THAT(succeed("--help"), AllOf(HasSubstr("render"), HasSubstr("response")));
    EXPECT_THAT(succeed("render --help"), HasSubstr("--no-compensate"));
}

} // namespace
