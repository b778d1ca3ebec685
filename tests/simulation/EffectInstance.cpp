#include "tests/simulation/EffectInstance.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/VSTEditor.h"

void EffectInstance::load()
{
    effect = VSTPluginMain(callback);
    require(effect, "the effect loads");
    effect->hostData = this;
    gestures.assign(static_cast<size_t>(effect->numParams), 0);
    dispatch(effOpen);
    dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0f);
    switchTo(true);
}

void EffectInstance::unload()
{
    if (!effect) return;
    switchTo(false);
    dispatch(effClose);
    effect = nullptr;
    require(allGesturesEnded(), "closing the effect ends all gestures");
}

EffectInstance::Bytes EffectInstance::chunk() const
{
    void *data = nullptr;
    const intptr_t size = dispatch(effGetChunk, 0, 0, &data);
    return Bytes(static_cast<uint8_t *>(data), static_cast<uint8_t *>(data) + size);
}

bool EffectInstance::setChunk(Bytes chunk, bool isPreset) const
{
    chunk.shrink_to_fit(); // the address sanitizer then finds reads past the end
    dispatch(effSetChunk, isPreset, static_cast<intptr_t>(chunk.size()), chunk.data());
    return plugin().lastChunkLoaded();
}

bool EffectInstance::checkChunk(const Bytes &damaged, bool isPreset) const
{
    const Bytes before = chunk();
    const std::vector<float> values = parameters();
    Bytes copy = damaged;
    require(dispatch(effSetChunk, isPreset, -1 - std::ssize(copy), copy.data()) == 0,
            "the effect refuses a negative chunk size");
    if (!setChunk(damaged, isPreset)) {
        require(parameters() == values, "a refused chunk changes no parameter");
        require(chunk() == before, "a refused chunk does not change the saved state");
        Journal::chunksRefused.add();
        return false;
    }
    requireFiniteParameters();
    const Bytes saved = chunk();
    require(setChunk(saved, isPreset), "the effect loads the state that it saved");
    require(chunk() == saved, "saving and loading does not change the state");
    Journal::chunksLoaded.add();
    return true;
}

bool EffectInstance::hasOpenEditor() const
{
    return effect && static_cast<VSTEditor &>(*plugin().getEditor()).getMainWindow();
}

void EffectInstance::requireIdle() const
{
    for (const auto rows : {plugin().parameters().hostRows(), plugin().parameters().hiddenRows()})
        for (const DSP::ParameterAddress &row : rows)
            require(!row.record().editing, "no parameter is being edited");
    require(allGesturesEnded(), "all gestures have ended");
    Journal::idleChecks.add();
}

void EffectInstance::requireFiniteParameters() const
{
    require(std::ranges::all_of(parameters(), [](float x) { return std::isfinite(x); }),
            "parameters are finite");
}

void EffectInstance::requireShortStrings() const
{
    for (int32_t i = 0; i < effect->numParams; ++i)
        for (const int32_t opcode : {effGetParamDisplay, effGetParamName, effGetParamLabel}) {
            std::vector<char> buffer(opcode == effGetParamLabel ? 8 : 24, 'x');
            dispatch(opcode, i, 0, buffer.data());
            require(std::ranges::count(buffer, '\0') > 0, "a parameter's strings fit their buffers");
        }
}

std::vector<float> EffectInstance::parameters() const
{
    std::vector<float> values;
    for (int32_t i = 0; i < effect->numParams; ++i) values.push_back(effect->getParameter(effect, i));
    return values;
}

bool EffectInstance::allGesturesEnded() const
{
    return std::ranges::count(gestures, 0) == std::ssize(gestures);
}

intptr_t EffectInstance::callback(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *,
                                  float opt)
{
    if (opcode == audioMasterVersion) return 2300;
    auto *const self =
        effect ? static_cast<EffectInstance *>(effect->hostData) : nullptr; // null during construction
    if (!self) return 0;
    switch (opcode) {
    case hostChannelConnected: return index >= (value == 0 ? self->inputs : self->outputs) ? 1 : 0;
    case audioMasterBeginEdit:
    case audioMasterEndEdit:
    case audioMasterAutomate: self->checkEdit(opcode, index, opt); return 0;
    default: return 0;
    }
}

void EffectInstance::checkEdit(int32_t opcode, int32_t index, float value)
{
    Journal::edits.add();
    require(index >= 0 && index < effect->numParams, "the effect reports only existing parameters");
    int &gesture = gestures[static_cast<size_t>(index)];
    if (opcode == audioMasterBeginEdit) ++gesture;
    if (opcode == audioMasterEndEdit) --gesture;
    require(gesture == 0 || gesture == 1, "begin and end of gestures alternate");
    if (opcode == audioMasterAutomate) {
        require(gesture == 1, "the effect reports values only inside a gesture");
        require(std::isfinite(value), "the effect reports finite values");
        if (echoes) effect->setParameter(effect, index, value);
    }
    constexpr int kMaxDepth = 3;
    if (!insideCallbacks || callbackDepth == kMaxDepth) return;
    ++callbackDepth;
    insideCallbacks();
    --callbackDepth;
}
