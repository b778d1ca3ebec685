#include "dsp/chain/TransformBase.h"

#include <algorithm>

#include "dsp/component/PluginLink.h"
#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/Kernels.h"
#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/FloatState.h"
#include "dsp/numerics/Math.h"
#include "platform/System.h"

namespace DSP {

namespace {
constexpr uint32_t kRefreshIntervalMs = 67; // least time between two refreshes of the editor

// A single bad sample would stay in recursive filters for ever.
uint64_t silenceGarbage(uint32_t frames, float *samples)
{
    return static_cast<uint64_t>(Kernels::active().block.silenceGarbage(
        samples, TransformBase::kLoudestSample, static_cast<int>(frames)));
}
} // namespace

TransformBase::TransformBase(PluginLink &pluginLink)
    : plugin(pluginLink),
      settings(std::make_unique<Global>(pluginLink)),
      derivedSettings(std::make_unique<GlobalDerived>(pluginLink))
{
}

uint32_t TransformBase::process(uint32_t frames, float *inLeft, float *inRight, float *outLeft,
                                float *outRight)
{
    if (frames == 0) return 0;
    const Util::Hold hold(plugin.getTransformLock());
    const FloatState floatState;

    const uint32_t mode = settings->getPresetChangeMode();
    const bool presetChanging = plugin.isPresetChanging();
    if (presetChanging ? mode == Global::bypassed : isPlainBypass()) {
        bypassCopy(frames, inLeft, inRight, outLeft, outRight);
        return frames;
    }
    if (presetChanging && mode == Global::muted) {
        ippsZero_32f(outLeft, static_cast<int>(frames));
        if (outRight) ippsZero_32f(outRight, static_cast<int>(frames));
        return frames;
    }

    const bool mono = settings->getProcessAsMono();
    if (inRight && mono != monoActive) {
        monoActive = mono;
        suspend();
        resume(sampleRate);
    }
    const uint64_t garbage = silenceGarbage(frames, inLeft) + (inRight ? silenceGarbage(frames, inRight) : 0);
    if (garbage) refused = refused + garbage;

    float *const callersRight = outRight;
    if (monoActive && inRight) {
        ippsAdd_32f_I(inRight, inLeft, static_cast<int>(frames));
        ippsMulC_32f_I(0.5f, inLeft, static_cast<int>(frames));
        inRight = outRight = nullptr;
    }

    updateComponents(activeUpdatePending, latencyUpdatePending);
    const struct InProcess { // also if memory for a block is short
        std::atomic<bool> &flag;
        explicit InProcess(std::atomic<bool> &f) : flag(f) { flag = true; }
        ~InProcess() { flag = false; }
    } block(inProcess);
    delayCompensation = settings->getDelayCompensation();
    bypassSteps.reserve(frames); // its automation may begin at any block
    const uint32_t zipperSamples = Math::roundHalfAwayFromZero(settings->getAutomationZipperSamples());
    const uint32_t written =
        isBypassAutomated() ? transformAutomated(frames, inLeft, inRight, outLeft, outRight, zipperSamples)
                            : transformNoise(frames, inLeft, inRight, outLeft, outRight, zipperSamples);
    refreshEditor();
    if (monoActive && callersRight && written) ippsCopy_32f(outLeft, callersRight, static_cast<int>(written));
    return written;
}

bool TransformBase::isBypassAutomated() const
{
    return settings->envelopeHandler().hasEnvelope(ParamKind::boolean, Global::kBypassParam);
}

bool TransformBase::isPlainBypass() const { return settings->getBypass() && !isBypassAutomated(); }

uint32_t TransformBase::transformAutomated(uint32_t frames, float *inLeft, float *inRight, float *outLeft,
                                           float *outRight, uint32_t zipperSamples)
{
    const int64_t blockTime = streamTime;
    const EnvelopeGrid grid = {blockTime, sampleRate, frames, zipperSamples};
    settings->envelopeHandler().evaluateBools(Global::kBypassParam, grid, settings->getBypass(), bypassSteps);
    uint32_t done = 0, written = 0;
    for (const bool bypass : bypassSteps) {
        const uint32_t count = std::min(zipperSamples, frames - done);
        if (!settings->boolParamEditing(Global::kBypassParam) && bypass != settings->getBypass()) {
            settings->setBypass(bypass);
            uiRefreshPending = true;
        }
        float *const right = inRight ? inRight + done : nullptr;
        float *const rightOut = outRight ? outRight + written : nullptr;
        if (settings->getBypass()) {
            bypassCopy(count, inLeft + done, right, outLeft + written, rightOut);
            written += count;
        } else {
            streamTime = grid.timeAt(done);
            written +=
                transformNoise(count, inLeft + done, right, outLeft + written, rightOut, zipperSamples);
        }
        done += count;
    }
    streamTime = blockTime;
    return written;
}

uint32_t TransformBase::transformNoise(uint32_t frames, float *inLeft, float *inRight, float *outLeft,
                                       float *outRight, uint32_t zipperSamples)
{
    addDenormalGuard(frames, inLeft, inRight, &inputGuardPhase, true);
    return transform(frames, inLeft, inRight, outLeft, outRight, zipperSamples);
}

void TransformBase::bypassCopy(uint32_t frames, const float *inLeft, const float *inRight, float *outLeft,
                               float *outRight)
{
    ippsCopy_32f(inLeft, outLeft, static_cast<int>(frames));
    if (inRight) ippsCopy_32f(inRight, outRight, static_cast<int>(frames));
}

void TransformBase::refreshEditor()
{
    if (!uiRefreshPending || !plugin.hasEditorWindow()) return;
    const uint32_t now = Platform::tickCount();
    if (now - lastRefreshTick < kRefreshIntervalMs) return;
    uiRefreshPending = false;
    lastRefreshTick = now;
    plugin.requestRefresh();
}

void TransformBase::updateComponents(bool updateActive, bool updateLatency)
{
    if (!updateActive && !updateLatency) return;
    if (updateActive) activeUpdatePending = false;
    if (updateLatency) latencyUpdatePending = false;
    if (updateActive)
        for (Component *component : plugin.componentList()) {
            const bool on = component->isActive();
            if (on == component->isSwitchedOn()) continue;
            component->setSwitchedOn(on);
            if (!on) component->resetComponent();
        }
    if (updateLatency) {
        uint32_t sum = plugin.addedLatency();
        for (Component *component : plugin.componentList())
            if (component->isSwitchedOn()) sum += component->totalLatency();
        latency = sum;
        plugin.latencyChanged();
    }
}

void TransformBase::requestActiveUpdate() { requestUpdate(true); }
void TransformBase::requestLatencyUpdate() { requestUpdate(false); }

void TransformBase::requestUpdate(bool activeToo)
{
    if (activeToo) activeUpdatePending = true;
    latencyUpdatePending = true;
    if (inProcess) return; // the audio thread carries it out at its next block
    updateComponents(activeUpdatePending, latencyUpdatePending);
    plugin.requestRefresh();
}

void TransformBase::resume(uint32_t rate)
{
    const Util::Hold hold(plugin.getTransformLock());
    delayCompensation = settings->getDelayCompensation();
    const bool changed = rate != sampleRate;
    sampleRate = rate;
    reset();
    for (Component *component : plugin.componentList()) component->setSampleRate(rate);
    updateComponents(activeUpdatePending, latencyUpdatePending);
    if (changed) plugin.postMessage(PluginLink::sampleRateChanged);
}

void TransformBase::suspend()
{
    const Util::Hold hold(plugin.getTransformLock());
    for (Component *component : plugin.componentList()) component->suspend();
}

void TransformBase::reset()
{
    const Util::Hold hold(plugin.getTransformLock());
    activeUpdatePending = true;
    latencyUpdatePending = true;
    inputGuardPhase = 0;
    resetState();
    for (Component *component : plugin.componentList()) component->resetComponent();
}

} // namespace DSP
