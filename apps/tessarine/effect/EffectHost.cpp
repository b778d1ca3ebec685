#include "apps/tessarine/effect/EffectHost.h"

#include <array>
#include <cstring>

#include "apps/tessarine/console/Failure.h"
#include "plugin/Product.h"

namespace App {

namespace {
constexpr intptr_t kVstVersion = 2400; // reported to the effect: VST 2.4
}

EffectHost::EffectHost(const Layout &wanted) : layout(wanted), effect(VSTPluginMain(answer))
{
    if (!effect)
        throw Failure(
            "the effect did not start, probably for lack of memory; close other programs and try again");
    effect->hostData = this;
    dispatch(effOpen);
    dispatch(effSetSampleRate, 0, static_cast<float>(layout.rate));
    dispatch(effSetBlockSize, static_cast<intptr_t>(layout.blockFrames));
}

EffectHost::~EffectHost()
{
    dispatch(effMainsChanged, 0);
    dispatch(effClose);
}

// The effect calls this from its constructor, before hostData is set.
intptr_t EffectHost::answer(AEffect *effect, int32_t opcode, int32_t index, intptr_t, void *ptr, float)
{
    const EffectHost *const host = effect ? static_cast<const EffectHost *>(effect->hostData) : nullptr;
    switch (opcode) {
    case audioMasterVersion: return kVstVersion;
    case hostVendorVersion: return Product::kVersion;
    case audioMasterGetProductString: std::strcpy(static_cast<char *>(ptr), "Tessarine renderer"); return 1;
    case hostChannelConnected: return host && index < static_cast<int32_t>(host->layout.channels) ? 0 : 1;
    case audioMasterGetSampleRate: return host ? static_cast<intptr_t>(host->layout.rate) : 0;
    case audioMasterGetBlockSize: return host ? static_cast<intptr_t>(host->layout.blockFrames) : 0;
    default: return 0;
    }
}

intptr_t EffectHost::dispatch(int32_t opcode, intptr_t value, float opt) const
{
    return effect->dispatcher(effect, opcode, 0, value, nullptr, opt);
}

std::string EffectHost::text(int32_t opcode, int32_t index) const
{
    std::array<char, 256> buffer{};
    effect->dispatcher(effect, opcode, index, 0, buffer.data(), 0.0f);
    return buffer.data();
}

std::string EffectHost::chunk() const
{
    void *bytes = nullptr; // owned by the effect
    const intptr_t size = effect->dispatcher(effect, effGetChunk, 0, 0, &bytes, 0.0f);
    return bytes && size > 0 ? std::string(static_cast<const char *>(bytes), static_cast<size_t>(size)) : "";
}

bool EffectHost::setChunk(std::string chunk)
{
    effect->dispatcher(effect, effSetChunk, 0, static_cast<intptr_t>(chunk.size()), chunk.data(), 0.0f);
    return VSTPlugin::of(effect)->lastChunkLoaded(); // effSetChunk returns the size even for a refused chunk
}

void EffectHost::disableSpectra()
{
    for (uint32_t band = 0; band < DSP::kBands; ++band)
        plugin().transformHandle().spectrum(band)->setMeterEnabled(false);
}

void EffectHost::start() { dispatch(effMainsChanged, 1); }

void EffectHost::process(float *const *in, float *const *out, uint32_t frames)
{
    effect->processReplacing(effect, const_cast<float **>(in), const_cast<float **>(out),
                             static_cast<int32_t>(frames));
}

bool EffectHost::openEditor(Platform::WindowHandle window)
{
    return effect->dispatcher(effect, effEditOpen, 0, 0, window, 0.0f) != 0;
}

void EffectHost::pressTab()
{
    constexpr intptr_t kTab = 2; // key code of Tab in the plug-in interface
    dispatch(effEditKeyDown, kTab);
}

uint32_t EffectHost::trueDelay() const
{
    // a bypassed chain does not delay, but its reported latency stays unchanged
    const DSP::Global *const global = plugin().transformHandle().global();
    return global->getBypass() ? 0 : plugin().latency();
}

} // namespace App
