#include "tests/soak/SoakedEffect.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "dsp/ParameterAccess.h"
#include "host/VSTEditor.h"
#include "tests/soak/Journal.h"

using Journal::require;

namespace {

template <class V>
bool anyEdited(const DSP::Component &component)
{
    using Access = DSP::ParameterAccess<V>;
    for (uint32_t i = 0; i < Access::count(component); ++i)
        if (Access::isEdited(component, i)) return true;
    return false;
}

} // namespace

SoakedEffect::SoakedEffect(uint32_t ownNumber) : number(ownNumber) { load(); }

SoakedEffect::~SoakedEffect() { unload(); }

void SoakedEffect::load()
{
    effect = VSTPluginMain(callback);
    require(effect, "the effect can be loaded", number);
    effect->user = this;
    gestures.assign(static_cast<size_t>(effect->numParams), 0);
    dispatch(effOpen);
    dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0f);
    dispatch(effMainsChanged, 0, 1);
}

void SoakedEffect::unload()
{
    if (!effect) return;
    dispatch(effMainsChanged, 0, 0);
    dispatch(effClose);
    effect = nullptr;
    require(std::ranges::count(gestures, 0) == std::ssize(gestures), "all gestures end with the effect",
            number);
}

SoakedEffect::Bytes SoakedEffect::chunk() const
{
    void *data = nullptr;
    const intptr_t size = dispatch(effGetChunk, 0, 0, &data);
    return Bytes(static_cast<uint8_t *>(data), static_cast<uint8_t *>(data) + size);
}

bool SoakedEffect::setChunk(Bytes chunk, bool isPreset) const
{
    return dispatch(effSetChunk, isPreset, static_cast<intptr_t>(chunk.size()), chunk.data()) != 0;
}

bool SoakedEffect::hasOpenEditor() const
{
    return effect && static_cast<VSTEditor &>(*plugin().getEditor()).getMainWindow();
}

bool SoakedEffect::isEditing() const
{
    return std::ranges::any_of(plugin().componentList(), [](const DSP::Component *component) {
        return anyEdited<float>(*component) || anyEdited<bool>(*component) || anyEdited<uint32_t>(*component);
    });
}

void SoakedEffect::requireRest() const
{
    require(!isEditing(), "no parameter stays held", number);
    require(std::ranges::count(gestures, 0) == std::ssize(gestures), "every gesture has ended", number);
    ++Journal::counts.idleChecks;
}

void SoakedEffect::requireFiniteParameters() const
{
    for (int32_t i = 0; i < effect->numParams; ++i)
        require(std::isfinite(effect->getParameter(effect, i)), "parameters are finite", number);
}

intptr_t SoakedEffect::callback(AEffect *effect, int32_t opcode, int32_t index, intptr_t value, void *,
                                float opt)
{
    if (opcode == audioMasterVersion) return 2300;
    auto *const self = effect ? static_cast<SoakedEffect *>(effect->user) : nullptr; // null while it is made
    switch (opcode) {
    case audioMasterPinConnected: return self && index >= (value == 0 ? self->inputs : self->outputs) ? 1 : 0;
    case audioMasterBeginEdit:
    case audioMasterEndEdit:
    case audioMasterAutomate:
        if (self) self->hearEdit(opcode, index, opt);
        return 0;
    default: return 0;
    }
}

void SoakedEffect::hearEdit(int32_t opcode, int32_t index, float value)
{
    ++Journal::counts.edits;
    require(index >= 0 && index < effect->numParams, "the host is told of its own parameters", number);
    int &gesture = gestures[static_cast<size_t>(index)];
    if (opcode == audioMasterBeginEdit) ++gesture;
    if (opcode == audioMasterEndEdit) --gesture;
    require(gesture == 0 || gesture == 1, "gestures begin and end in turns", number);
    if (opcode == audioMasterAutomate) {
        require(gesture == 1, "a value comes inside a gesture", number);
        require(std::isfinite(value), "the host is told of finite values", number);
        if (echoes) effect->setParameter(effect, index, value);
    }
    if (const auto act = std::exchange(insideNextEdit, {})) {
        ++Journal::counts.actsInsideCalls;
        act();
    }
}
