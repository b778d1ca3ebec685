#pragma once
#include "PluginBase/Util/Reflected.h"

namespace Util {

/// Adds a number to a signal, so that one receiver can tell many senders apart. It belongs to the sender.
class SignalProxy : public Reflected<SignalProxy, Object> {
public:
    static constexpr const char *kClassName = "Util::SignalProxy";

    /// Connects `signal` of the sender to `slot`, which takes a uint, of the receiver.
    SignalProxy(Object *sender, const char *signal, Object *receiver, const char *slot, uint32_t number);

    void sigProxy(uint32_t number) { emitSignal(0, number); }
    void sigProxyBool(bool on) { emitSignal(1, on); }
    void slotProxyUInt() { sigProxy(id); }
    void slotProxyBool() { sigProxyBool(flag); }
    static std::span<const MetaEntry> signalTable();
    static std::span<const MetaEntry> slotTable();

private:
    const uint32_t id;
    const bool flag = false;
};

/// The same for a signal with a float.
class SignalProxyFloat : public Reflected<SignalProxyFloat, Object> {
public:
    static constexpr const char *kClassName = "Util::SignalProxyFloat";

    /// The slot takes a uint and a float.
    SignalProxyFloat(Object *sender, const char *signal, Object *receiver, const char *slot, uint32_t number);

    void sigProxy(uint32_t number, float value) { emitSignal(0, number, value); }
    void slotProxy(float value) { sigProxy(id, value); }
    static std::span<const MetaEntry> signalTable();
    static std::span<const MetaEntry> slotTable();

private:
    const uint32_t id;
};

} // namespace Util
