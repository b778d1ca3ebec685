#include "apps/tessarine/effect/EffectSetup.h"

#include "apps/tessarine/effect/Assignment.h"
#include "apps/tessarine/effect/ChunkFile.h"
#include "apps/tessarine/effect/CutoffCheck.h"

namespace App {

std::unique_ptr<EffectHost> makeEffect(const RenderOptions &options, const AudioReader &reader,
                                       uint32_t blockFrames)
{
    auto host = std::make_unique<EffectHost>(
        EffectHost::Layout{.rate = reader.rate(), .channels = reader.channels(), .blockFrames = blockFrames});
    if (!options.chunk.empty()) loadChunk(*host, options.chunk);
    applySettings(*host, options.settings);
    requireAscendingCutoffs(*host->plugin().transformHandle().crossOver());
    return host;
}

} // namespace App
