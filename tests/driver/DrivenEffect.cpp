#include "tests/driver/DrivenEffect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/VSTEditor.h"

void DrivenEffect::load()
{
    effect = VSTPluginMain(callback);
    require(effect, "the effect can be loaded");
    effect->hostData = this;
    gestures.assign(static_cast<size_t>(effect->numParams), 0);
    dispatch(effOpen);
    dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0f);
    switchTo(true);
}

void DrivenEffect::unload()
{
    if (!effect) return;
    switchTo(false);
    dispatch(effClose);
    effect = nullptr;
    require(allGesturesEnded(), "all gestures end with the effect");
}

DrivenEffect::Bytes DrivenEffect::chunk() const
{
    void *data = nullptr;
    const intptr_t size = dispatch(effGetChunk, 0, 0, &data);
    return Bytes(static_cast<uint8_t *>(data), static_cast<uint8_t *>(data) + size);
}

bool DrivenEffect::setChunk(Bytes chunk, bool isPreset) const
{
    chunk.shrink_to_fit(); // without a spare byte, so that reading past the end shows
    dispatch(effSetChunk, isPreset, static_cast<intptr_t>(chunk.size()), chunk.data());
    return plugin().lastChunkLoaded();
}

bool DrivenEffect::offer(const Bytes &offered, bool isPreset) const
{
    const Bytes before = chunk();
    const std::vector<float> values = parameters();
    Bytes copy = offered;
    require(dispatch(effSetChunk, isPreset, -1 - std::ssize(copy), copy.data()) == 0,
            "a negative size is refused");
    if (!setChunk(offered, isPreset)) {
        require(parameters() == values, "a refused chunk changes no parameter");
        require(chunk() == before, "a refused chunk changes nothing that is saved");
        Journal::chunksRefused.add();
        return false;
    }
    requireFiniteParameters();
    const Bytes taken = chunk();
    require(setChunk(taken, isPreset), "what was taken can be saved and loaded");
    require(chunk() == taken, "what was taken stays the same when saved and loaded");
    Journal::chunksTaken.add();
    return true;
}

bool DrivenEffect::hasOpenEditor() const
{
    return effect && static_cast<VSTEditor &>(*plugin().getEditor()).getMainWindow();
}

void DrivenEffect::requireRest() const
{
    for (const auto rows : {plugin().parameters().hostRows(), plugin().parameters().hiddenRows()})
        for (const DSP::ParameterAddress &row : rows)
            require(!row.record().editing, "no parameter stays held");
    require(allGesturesEnded(), "every gesture has ended");
    Journal::checksAtRest.add();
}

void DrivenEffect::requireFiniteParameters() const
{
    require(std::ranges::all_of(parameters(), [](float x) { return std::isfinite(x); }),
            "parameters are finite");
}

void DrivenEffect::requireTextsThatFit() const
{
    for (int32_t i = 0; i < effect->numParams; ++i)
        for (const int32_t opcode : {effGetParamDisplay, effGetParamName, effGetParamLabel}) {
            std::vector<char> room(opcode == effGetParamLabel ? 8 : 24, 'x');
            dispatch(opcode, i, 0, room.data());
            require(std::ranges::count(room, '\0') > 0, "a parameter's texts fit");
        }
}

std::vector<float> DrivenEffect::parameters() const
{
    std::vector<float> values;
    for (int32_t i = 0; i < effect->numParams; ++i) values.push_back(effect->getParameter(effect, i));
    return values;
}

bool DrivenEffect::allGesturesEnded() const
{
    return std::ranges::count(gestures, 0) == std::ssize(gestures);
}

intptr_t DrivenEffect::callback(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *,
                                float opt)
{
    if (opcode == audioMasterVersion) return 2300;
    auto *const self =
        effect ? static_cast<DrivenEffect *>(effect->hostData) : nullptr; // null while it is made
    if (!self) return 0;
    switch (opcode) {
    case hostChannelConnected: return index >= (value == 0 ? self->inputs : self->outputs) ? 1 : 0;
    case audioMasterBeginEdit:
    case audioMasterEndEdit:
    case audioMasterAutomate: self->hearEdit(opcode, index, opt); return 0;
    default: return 0;
    }
}

void DrivenEffect::hearEdit(int32_t opcode, int32_t index, float value)
{
    Journal::edits.add();
    require(index >= 0 && index < effect->numParams, "the host is told of its own parameters");
    int &gesture = gestures[static_cast<size_t>(index)];
    if (opcode == audioMasterBeginEdit) ++gesture;
    if (opcode == audioMasterEndEdit) --gesture;
    require(gesture == 0 || gesture == 1, "gestures begin and end in turns");
    if (opcode == audioMasterAutomate) {
        require(gesture == 1, "a value comes inside a gesture");
        require(std::isfinite(value), "the host is told of finite values");
        if (echoes) effect->setParameter(effect, index, value);
    }
    constexpr int kDeepest = 3;
    if (!insideEdits || callsDeep == kDeepest) return;
    ++callsDeep;
    insideEdits();
    --callsDeep;
}
