#include <cmath>

#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/effect/Response.h"

namespace App {

namespace {

/// Index of the first sample that is louder than the noise added to prevent denormals.
uint32_t firstArrival(const std::vector<float> &response)
{
    constexpr float kAudible = 1e-6f;
    for (uint32_t i = 0; i < response.size(); ++i) {
        if (std::abs(response[i]) > kAudible) return i;
    }
    throw Failure("the effect did not output the test impulse within one second");
}

void showLatency(uint32_t rate)
{
    EffectHost host({.rate = rate, .channels = 2, .blockFrames = kImpulseBlock});
    host.start();
    const auto known = host.trueDelay();
    const auto reported = static_cast<uint32_t>(host.reportedDelay());
    const uint32_t measured = firstArrival(impulseResponse(host, rate));

    fmt::print("Delay at {} Hz\n", rate);
    const std::pair<const char *, uint32_t> rows[] = {
        {"reported to the host", reported}, {"true delay", known}, {"measured", measured}};
    for (const auto &[name, samples] : rows)
        fmt::print("  {:<20}  {:>5} samples  {:7.3f} ms\n", name, samples, samples * 1000.0 / rate);
    if (reported != known)
        fmt::print("Hosts learn of a changed delay only while an editor is open; the renderer uses the true "
                   "delay.\n");
}

} // namespace

void addLatency(CLI::App &app)
{
    CLI::App *const command =
        app.add_subcommand("latency", "Show the effect's delay: reported to hosts, true and measured");
    const auto rate = std::make_shared<uint32_t>(44100); // Hz
    addRate(command, *rate);
    command->callback([rate] { showLatency(*rate); });
    endHelp(command, {"tessarine latency --rate 48k"});
}

} // namespace App
