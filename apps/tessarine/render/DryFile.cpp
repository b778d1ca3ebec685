#include "apps/tessarine/render/DryFile.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "apps/tessarine/console/Interrupt.h"
#include "apps/tessarine/console/Progress.h"

namespace App {

void writeDry(AudioReader &reader, AudioWriter &writer, uint32_t delay, double gainDb)
{
    constexpr uint32_t kBlockFrames = 4096;
    const auto gain = static_cast<float>(std::pow(10.0, gainDb / 20.0));
    const uint64_t silent = std::min<uint64_t>(delay, reader.frames());
    std::vector<float> block(size_t{kBlockFrames} * reader.channels());
    Progress progress(reader.frames(), reader.rate());
    for (uint64_t done = 0; done < reader.frames();) {
        stopIfInterrupted();
        const uint64_t end = done < silent ? silent : reader.frames();
        const auto frames = static_cast<uint32_t>(std::min<uint64_t>(kBlockFrames, end - done));
        std::fill(block.begin(), block.end(), 0.0f);
        if (done >= silent) reader.read(block.data(), frames);
        for (float &sample : block) sample = std::isfinite(sample) ? sample * gain : 0.0f;
        writer.write(block.data(), frames);
        done += frames;
        progress.show(done);
    }
}

} // namespace App
