#include <cmath>

#include "PluginBase/Util/ByteStream.h"
#include "plugin/Plugin.h"

// Format of a program's state: little-endian, no padding. It starts with magic, version and total length. One block
// per component follows: saved floats (4 bytes each), bools (1), ints (4) and extras (4) in list order, then the
// size of the component's own state and that state.

namespace {

using DSP::ParameterValue;
using DSP::ParamKind;

uint32_t storedSize(ParamKind kind) { return kind == ParamKind::boolean ? 1 : 4; }

bool hasOwnState(const DSP::Component &component)
{
    return component.stateSize() != 0 && component.stateKind() != DSP::Component::kNoOwnState;
}

/// Visits the saved parameters of a component in the order of the image.
template <class Visit>
void forEachSaved(DSP::Component &component, Visit visit)
{
    for (const ParamKind kind : DSP::kParamLists)
        for (uint32_t i = 0; i < component.numParams(kind); ++i)
            if (component.param(kind, i).isSaved()) visit(DSP::ParameterAddress{&component, kind, i});
}

void put(Util::DataStream &stream, const ParameterValue &value)
{
    if (const float *const real = std::get_if<float>(&value))
        stream.writeFloat(*real);
    else if (const bool *const on = std::get_if<bool>(&value))
        stream.writeUInt8(*on);
    else
        stream.writeUInt32(std::get<uint32_t>(value));
}

ParameterValue get(Util::DataStream &stream, ParamKind kind)
{
    switch (kind) {
    case ParamKind::real: return stream.getFloat();
    case ParamKind::boolean: return stream.getUInt8() != 0;
    default: return stream.getUInt32();
    }
}

} // namespace

void Plugin::registerComponent(DSP::Component *component)
{
    components.push_back(component);
    forEachSaved(*component, [this](const auto &saved) { stateSize += storedSize(saved.kind); });
    stateSize += sizeof(uint32_t) + (hasOwnState(*component) ? component->stateSize() : 0);
}

template <class ReadValue>
Plugin::StateImage Plugin::writeState(ReadValue readValue) const
{
    Util::ByteStream stream(stateSize);
    stream.writeUInt32(kStateMagic).writeUInt32(kStateVersion).writeUInt32(stateSize);
    for (DSP::Component *component : components) {
        forEachSaved(*component, [&](const auto &saved) { put(stream, readValue(saved)); });
        stream.writeUInt32(component->stateSize());
        if (hasOwnState(*component)) component->writeState(stream, stream.position());
    }
    return stream.bytes();
}

Plugin::StateImage Plugin::captureState() const
{
    return writeState([](const DSP::ParameterAddress &saved) { return saved.value(); });
}

Plugin::StateImage Plugin::captureDefaultState() const
{
    return writeState([](const DSP::ParameterAddress &saved) { return saved.record().defaultValue; });
}

bool Plugin::isValidState(const StateImage &image) const
{
    if (image.size() != stateSize) return false;
    Util::ByteStream stream(stateSize, image.data());
    if (stream.getUInt32() != kStateMagic || stream.getUInt32() != kStateVersion ||
        stream.getUInt32() != stateSize)
        return false;
    // A non-finite value is never saved, and loading one would put NaN into the filters' state.
    bool finite = true;
    for (DSP::Component *component : components) {
        forEachSaved(*component, [&](const auto &saved) {
            finite &= std::isfinite(DSP::toNumber(get(stream, saved.kind)));
        });
        stream.getUInt32();
        if (hasOwnState(*component)) stream.seek(stream.position() + component->stateSize());
    }
    return finite;
}

void Plugin::applyState(const StateImage &image, bool notify)
{
    const Util::Hold hold(stateLock);
    for (DSP::Component *component : components) component->beginStateLoad();

    Util::ByteStream stream(static_cast<uint32_t>(image.size()), image.data());
    stream.seek(kStateHeader);
    for (DSP::Component *component : components) {
        forEachSaved(*component, [&](const DSP::ParameterAddress &saved) {
            const ParameterValue value = get(stream, saved.kind);
            if (saved.set(value) && notify) notifyParameter(saved, EditPhase::value, value);
        });
        const uint32_t ownBytes = stream.getUInt32();
        const uint32_t start = stream.position();
        if (ownBytes != 0 && hasOwnState(*component)) component->readState(stream, start);
        if (hasOwnState(*component)) stream.seek(start + component->stateSize());
    }
    for (DSP::Component *component : components) component->endStateLoad();
}

bool Plugin::restoreState(const StateImage &image, bool notify)
{
    if (!isValidState(image)) return false;
    applyState(image, notify);
    return true;
}

bool Plugin::loadState(const StateImage &image)
{
    if (!isValidState(image)) return false;
    loadValidState(image);
    return true;
}

void Plugin::loadValidState(const StateImage &image)
{
    applyState(image, false);
    if (!hasEditorWindow()) return;
    postMessage(stateLoaded);
    requestRefresh();
}
