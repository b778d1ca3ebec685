#include <cmath>

#include "PluginBase/Util/ByteStream.h"
#include "dsp/component/ParameterAccess.h"
#include "plugin/Plugin.h"

// The image of a program's state. Little-endian, without padding: magic, version and length of the image,
// then a block for each component: saved floats (4 bytes each), bools (1), ints (4) and extras (4) in list
// order, the size of the component's own state and that state.

namespace {

template <class V>
constexpr uint32_t kStoredSize = sizeof(V) == 1 ? 1 : 4;

template <class V>
uint32_t savedBytes(const DSP::Component &component)
{
    using Access = DSP::ParameterAccess<V>;
    uint32_t bytes = 0;
    for (uint32_t i = 0; i < Access::count(component); ++i)
        if (Access::isSaved(component, i)) bytes += kStoredSize<V>;
    return bytes;
}

bool isSavedExtra(const DSP::Component &component, uint32_t i)
{
    return component.extraParamPersistence(i) == DSP::inProgram;
}

bool hasOwnState(const DSP::Component &component)
{
    return component.stateSize() != 0 && component.stateKind() != DSP::Component::kNoOwnState;
}

void put(Util::DataStream &stream, float value) { stream.writeFloat(value); }
void put(Util::DataStream &stream, bool value) { stream.writeUInt8(value); }
void put(Util::DataStream &stream, uint32_t value) { stream.writeUInt32(value); }

template <class V, class ReadValue>
void putAll(Util::DataStream &stream, const DSP::Component &component, ReadValue readValue)
{
    using Access = DSP::ParameterAccess<V>;
    for (uint32_t i = 0; i < Access::count(component); ++i)
        if (Access::isSaved(component, i)) put(stream, readValue.template operator()<V>(component, i));
}

void get(Util::DataStream &stream, float &value) { stream.readFloat(value); }
void get(Util::DataStream &stream, bool &value) { value = stream.getUInt8() != 0; }
void get(Util::DataStream &stream, uint32_t &value) { stream.readUInt32(value); }

/// Bytes of a component in the image.
uint32_t blockBytes(const DSP::Component &component)
{
    uint32_t bytes =
        savedBytes<float>(component) + savedBytes<bool>(component) + savedBytes<uint32_t>(component);
    for (uint32_t i = 0; i < component.numExtraParams(); ++i)
        if (isSavedExtra(component, i)) bytes += kStoredSize<uint32_t>;
    return bytes + sizeof(uint32_t) + (hasOwnState(component) ? component.stateSize() : 0);
}

} // namespace

void Plugin::registerComponent(DSP::Component *component)
{
    components.push_back(component);
    stateSize += blockBytes(*component);
}

template <class ReadValue>
Plugin::StateImage Plugin::writeState(ReadValue readValue) const
{
    Util::ByteStream stream(stateSize);
    stream.writeUInt32(kStateMagic).writeUInt32(kStateVersion).writeUInt32(stateSize);
    for (const DSP::Component *component : components) {
        putAll<float>(stream, *component, readValue);
        putAll<bool>(stream, *component, readValue);
        putAll<uint32_t>(stream, *component, readValue);
        for (uint32_t i = 0; i < component->numExtraParams(); ++i)
            if (isSavedExtra(*component, i)) stream.writeUInt32(component->extraParamValue(i));
        stream.writeUInt32(component->stateSize());
        if (hasOwnState(*component)) component->writeState(stream, stream.position());
    }
    return stream.bytes();
}

Plugin::StateImage Plugin::captureState() const
{
    return writeState(
        []<class V>(const DSP::Component &c, uint32_t i) { return DSP::ParameterAccess<V>::value(c, i); });
}

Plugin::StateImage Plugin::captureDefaultState() const
{
    return writeState(
        []<class V>(const DSP::Component &c, uint32_t i) { return DSP::ParameterAccess<V>::initial(c, i); });
}

bool Plugin::isValidState(const StateImage &image) const
{
    if (image.size() != stateSize) return false;
    Util::ByteStream stream(stateSize, image.data());
    if (stream.getUInt32() != kStateMagic || stream.getUInt32() != kStateVersion ||
        stream.getUInt32() != stateSize)
        return false;
    // what is not finite was never saved by us, and would never leave the sound again
    for (const DSP::Component *component : components) {
        const uint32_t end = stream.position() + blockBytes(*component);
        for (uint32_t floats = savedBytes<float>(*component) / sizeof(float); floats > 0; --floats)
            if (!std::isfinite(stream.getFloat())) return false;
        stream.seek(end);
    }
    return true;
}

template <class V>
void Plugin::restoreParameter(DSP::Component &component, uint32_t index, V value, bool notify)
{
    using Access = DSP::ParameterAccess<V>;
    const bool differs = Access::value(component, index) != value;
    Access::set(component, index, value);
    if (!notify || !differs) return;
    if constexpr (std::is_same_v<V, float>)
        notifyParameter(DSP::ParamKind::real, EditPhase::value, &component, index, &value, nullptr, nullptr);
    else if constexpr (std::is_same_v<V, bool>)
        notifyParameter(DSP::ParamKind::boolean, EditPhase::value, &component, index, nullptr, &value,
                        nullptr);
    else
        notifyParameter(DSP::ParamKind::integer, EditPhase::value, &component, index, nullptr, nullptr,
                        &value);
}

bool Plugin::restoreState(const StateImage &image, bool notify)
{
    if (!isValidState(image)) return false;
    const Util::Hold hold(stateLock);
    for (DSP::Component *component : components) component->beginStateLoad();

    Util::ByteStream stream(static_cast<uint32_t>(image.size()), image.data());
    stream.seek(kStateHeader);
    const auto restoreAll = [&]<class V>(DSP::Component &component, V value) {
        using Access = DSP::ParameterAccess<V>;
        for (uint32_t i = 0; i < Access::count(component); ++i) {
            if (!Access::isSaved(component, i)) continue;
            get(stream, value);
            restoreParameter(component, i, value, notify);
        }
    };
    for (DSP::Component *component : components) {
        restoreAll(*component, 0.0f);
        restoreAll(*component, false);
        restoreAll(*component, 0u);
        for (uint32_t i = 0; i < component->numExtraParams(); ++i)
            if (isSavedExtra(*component, i)) component->setExtraParamValue(i, stream.getUInt32());
        const uint32_t ownBytes = stream.getUInt32();
        const uint32_t start = stream.position();
        if (ownBytes != 0 && hasOwnState(*component)) component->readState(stream, start);
        if (hasOwnState(*component)) stream.seek(start + component->stateSize());
    }
    for (DSP::Component *component : components) component->endStateLoad();
    return true;
}

bool Plugin::loadState(const StateImage &image)
{
    if (!restoreState(image, false)) return false;
    if (hasEditorWindow()) {
        postMessage(stateLoaded);
        requestRefresh();
    }
    return true;
}
