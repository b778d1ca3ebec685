#include "dsp/chain/TransformBase.h"

#include "dsp/kernels/DenormalGuard.h"
#include "dsp/kernels/VectorOperations.h"
#include "dsp/numerics/FloatState.h"
#include "dsp/numerics/Math.h"
#include "platform/System.h"

namespace DSP {

namespace {
constexpr uint32_t kRefreshIntervalMs = 67; // shortest time between two refreshes of the editor

// A single NaN would stay in the recursive filters.
uint32_t silenceGarbage(const Block &block)
{
    const auto silence = Kernels::active().block.silenceGarbage;
    const uint32_t left = silence(block.left, TransformBase::kLoudestSample, block.frames);
    return block.right ? left + silence(block.right, TransformBase::kLoudestSample, block.frames) : left;
}
} // namespace

uint32_t TransformBase::process(const Block &in, const Block &out, int64_t time)
{
    if (in.frames == 0) return 0;
    const Util::Hold hold(transformLock);
    const FloatState floatState;

    const uint32_t mode = settings.getPresetChangeMode();
    if (presetChanging ? mode == Global::bypassed : isPlainBypass()) {
        bypassCopy(in, out);
        return in.frames;
    }
    if (presetChanging && mode == Global::muted) {
        clearSamples(out.left, out.frames);
        if (out.right) clearSamples(out.right, out.frames);
        return in.frames;
    }

    followMonoSetting(in.right);
    if (const uint32_t garbage = silenceGarbage(in)) refused = refused + garbage;
    Block input = in, output = out;
    if (monoActive && in.right) {
        addSamples(in.right, in.left, in.frames);
        scaleSamples(0.5f, in.left, in.frames);
        input.right = output.right = nullptr;
    }

    updateComponents(activeUpdatePending, latencyUpdatePending);
    const struct InProcess { // clears the flag even if an allocation throws
        std::atomic<bool> &flag;
        explicit InProcess(std::atomic<bool> &f) : flag(f) { flag = true; }
        ~InProcess() { flag = false; }
    } block(inProcess);
    const Now now = {sampleRate, time, Math::roundHalfAwayFromZero(settings.getAutomationZipperSamples())};
    if (isBypassAutomated())
        transformAutomated(now, input, output);
    else
        transformNoise(now, input, output);
    if (monoActive && out.right) copySamples(out.left, out.right, out.frames);
    return in.frames;
}

bool TransformBase::isBypassAutomated() const
{
    return settings.envelopeHandler().hasEnvelope(ParamKind::boolean, Global::kBypassParam);
}

void TransformBase::followMonoSetting(bool stereo)
{
    const bool mono = settings.getProcessAsMono();
    if (!stereo || mono == monoActive) return;
    monoActive = mono;
    suspend();
    resume(sampleRate);
}

void TransformBase::transformAutomated(const Now &now, const Block &in, const Block &out)
{
    const int64_t first = EnvelopeHandler::sampleAt(now.time, now.rate);
    for (uint32_t done = 0; done < in.frames; done += now.step) {
        const uint32_t count = std::min(now.step, in.frames - done);
        const auto bypass =
            settings.envelopeHandler().valueAt<bool>(Global::kBypassParam, first + done, now.rate);
        if (bypass && *bypass != settings.getBypass() && !settings.boolParamEditing(Global::kBypassParam)) {
            settings.setBypass(*bypass);
            uiRefreshPending = true;
        }
        if (settings.getBypass())
            bypassCopy(in.part(done, count), out.part(done, count));
        else
            transformNoise(now.after(done), in.part(done, count), out.part(done, count));
    }
}

void TransformBase::transformNoise(const Now &now, const Block &in, const Block &out)
{
    addDenormalGuard(in.frames, in.left, in.right, &inputGuardPhase, true);
    transform(now, in, out);
}

void TransformBase::bypassCopy(const Block &in, const Block &out)
{
    copySamples(in.left, out.left, in.frames);
    if (in.right) copySamples(in.right, out.right, in.frames);
}

bool TransformBase::takeRefresh()
{
    if (!uiRefreshPending) return false;
    const uint32_t now = Platform::tickCount();
    if (now - lastRefreshTick < kRefreshIntervalMs) return false;
    uiRefreshPending = false;
    lastRefreshTick = now;
    return true;
}

void TransformBase::updateComponents(bool updateActive, bool updateLatency)
{
    if (updateActive) {
        activeUpdatePending = false;
        for (Component *component : components) {
            const bool on = component->isActive();
            if (on == component->isSwitchedOn()) continue;
            component->setSwitchedOn(on);
            if (!on) component->resetComponent();
        }
    }
    if (updateLatency) {
        latencyUpdatePending = false;
        uint32_t sum = 0;
        for (Component *component : components)
            if (component->isSwitchedOn()) sum += component->totalLatency();
        latency = sum;
        latencyUpdated = true;
    }
}

bool TransformBase::requestUpdate(bool activeToo)
{
    if (presetChanging) return false;
    if (activeToo) activeUpdatePending = true;
    latencyUpdatePending = true;
    if (inProcess) return false; // the audio thread updates at its next block
    updateComponents(activeUpdatePending, latencyUpdatePending);
    return true;
}

void TransformBase::resume(uint32_t rate)
{
    const Util::Hold hold(transformLock);
    sampleRate = rate;
    reset();
    for (Component *component : components) component->setSampleRate(rate);
    updateComponents(activeUpdatePending, latencyUpdatePending);
}

void TransformBase::suspend()
{
    const Util::Hold hold(transformLock);
    for (Component *component : components) component->suspend();
}

void TransformBase::reset()
{
    const Util::Hold hold(transformLock);
    activeUpdatePending = true;
    latencyUpdatePending = true;
    inputGuardPhase = 0;
    resetState();
    for (Component *component : components) component->resetComponent();
}

} // namespace DSP
