#include "tests/apps/Sandbox.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

using Report = Sandbox;

TEST_F(Report, ShowsLevelsAndGainReductionInTerminalPictureAndSelfContainedPage)
{
    write("<bass>.wav", kWav24, 44100, Signals::sine(44100, 50.0, 44100 * 2, -12.0));
    // The tone is 18 dB above the threshold, so Band 1 reduces it by 12 dB at a ratio of 3.
    const std::string
        call = "render '<bass>.wav' out.wav --set 'Band 1 Comp Threshold=-30' --set 'Band 1 Ratio=3'"
               " --set 'Band 1 Attack=0' --report ",
        screen = succeed(call + "report.PNG");
    EXPECT_THAT(screen, ContainsRegex("Sample peak +-12.0 dBFS"));
    EXPECT_THAT(screen, ContainsRegex("Band 1 +-1[12].[0-9] dB +-1[12].[0-9] dB"));
    EXPECT_THAT(screen, ContainsRegex("Band 3 +0.0 dB +0.0 dB"));
    EXPECT_THAT(screen, ContainsRegex("Limiter +0.0 dB +0.0 dB"));
    EXPECT_THAT(screen, AllOf(HasSubstr("LUFS"), HasSubstr("x real time"), HasSubstr("report.PNG")));
    EXPECT_THAT(readBytes("report.PNG"), StartsWith("\x89PNG\r\n"));

    succeed(call + "report.html");
    const std::string page = readBytes("report.html");
    EXPECT_THAT(page, AllOf(HasSubstr("<svg"), HasSubstr("&lt;bass&gt;.wav"), HasSubstr("Band 1 Ratio=3"),
                            HasSubstr("LUFS"), HasSubstr("</html>")));
    EXPECT_THAT(page, AllOf(Not(ContainsRegex("(src|href)=\"[^#]")), Not(HasSubstr("<?xml"))));
}

TEST_F(Report, DrawsFileNamesThatAreNotUtf8)
{
    const std::string name = "G\xFCte\t\x01.wav";
    write(name, kWav16, 44100, Signals::noise(1, 5000, -20.0));
    for (const char *report : {"a.html", "a.png"})
        succeed("render '" + name +
                "' 'Gr\xF6\xDF"
                "e.wav' --report " +
                report);
    EXPECT_THAT(readBytes("a.png"), StartsWith("\x89PNG\r\n"));
    EXPECT_THAT(readBytes("a.html"), HasSubstr("G\uFFFDte\uFFFD\uFFFD.wav"));
    EXPECT_THAT(readBytes("a.html"), Not(HasSubstr("\xFC")));
}

TEST_F(Report, IsNotWrittenWithoutItsTable)
{
    write("in.wav", kWav16, 44100, Signals::noise(1, 5000, -20.0));
    const Program::Outcome outcome = run("render in.wav out.wav --report a.html >/dev/full");
    EXPECT_EQ(1, outcome.exitCode);
    EXPECT_THAT(outcome.err, HasSubstr("cannot write to standard output"));
    EXPECT_EQ((std::set<std::string>{"in.wav", "out.wav"}), contents());
}

} // namespace
