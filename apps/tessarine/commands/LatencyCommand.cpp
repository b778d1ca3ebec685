#include <cmath>

#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/console/Failure.h"
#include "apps/tessarine/effect/Response.h"

namespace App {

namespace {

/// Index of the first sample that is not the noise which keeps the filters from denormal numbers.
uint32_t firstArrival(const std::vector<float> &response)
{
    constexpr float kAudible = 1e-6f;
    for (uint32_t i = 0; i < response.size(); ++i) {
        if (std::abs(response[i]) > kAudible) return i;
    }
    throw Failure("the impulse did not come through the effect within a second");
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
        {"reported to the host", reported}, {"known by the effect", known}, {"measured", measured}};
    for (const auto &[name, samples] : rows)
        fmt::print("  {:<20}  {:>5} samples  {:7.3f} ms\n", name, samples, samples * 1000.0 / rate);
    if (reported != known)
        fmt::print("A host hears of a changed delay only while an editor is open; the renderer goes by the "
                   "effect.\n");
}

} // namespace

void addLatency(CLI::App &app)
{
    CLI::App *const command =
        app.add_subcommand("latency", "Show the delay: reported to hosts, known by the effect, measured");
    const auto rate = std::make_shared<uint32_t>(44100); // Hz
    addRate(command, *rate);
    command->callback([rate] { showLatency(*rate); });
}

} // namespace App
