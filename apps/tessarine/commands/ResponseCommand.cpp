#include <fmt/format.h>

#include "apps/tessarine/commands/Commands.h"
#include "apps/tessarine/files/TemporaryFile.h"
#include "apps/tessarine/pictures/ResponsePicture.h"

namespace App {

void run(const ResponseOptions &options)
{
    TemporaryFile file(options.png); // first, so that a place that cannot be written costs no measuring
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

} // namespace App
