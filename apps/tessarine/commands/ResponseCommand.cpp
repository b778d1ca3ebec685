#include "apps/tessarine/commands/CommandLine.h"
#include "apps/tessarine/files/OutputPath.h"
#include "apps/tessarine/files/TemporaryFile.h"
#include "apps/tessarine/pictures/ResponsePicture.h"

namespace App {

namespace {

struct ResponseOptions {
    std::vector<std::string> settings; // each "NAME=VALUE"
    uint32_t rate = 44100;             // Hz
    std::filesystem::path png;
};

void showResponse(const ResponseOptions &options)
{
    TemporaryFile file(options.png); // opened first, to fail before measuring if it cannot be written
    const Response response = measureResponse(options.rate, options.settings);
    file.write(drawResponse(response, PictureFormat::png));
    file.commit();

    const Response::Extreme low = response.lowest(), high = response.highest();
    fmt::print("Cutoffs  {:.0f}, {:.0f}, {:.0f} Hz at {} Hz sample rate\n", response.cutoffs[0],
               response.cutoffs[1], response.cutoffs[2], options.rate);
    fmt::print("Sum      {:+.2f} dB at {:.0f} Hz to {:+.2f} dB at {:.0f} Hz\n", low.db, low.frequency,
               high.db, high.frequency);
    fmt::print("Picture  {}\n", options.png.string());
}

} // namespace

void addResponse(CLI::App &app)
{
    const auto options = std::make_shared<ResponseOptions>();
    CLI::App *const command =
        app.add_subcommand("response", "Measure the frequency response of each band and of their sum");
    addSettings(command, options->settings);
    addRate(command, options->rate);
    command->add_option("--png", options->png, "PNG picture to write")
        ->type_name("FILE")
        ->required()
        ->check(checkPictureName, "");
    command->callback([options] { showResponse(*options); });
    endHelp(command, {"tessarine response --png response.png --set \"Crossover Low Cutoff=200 Hz\""});
}

} // namespace App
