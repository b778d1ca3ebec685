#pragma once
#include "PluginBase/Util/Reflected.h"

namespace Util {

/// Adds a number to a signal, so that one receiver can distinguish several senders. The sender owns it.
class SignalProxy : public Reflected<SignalProxy, Object> {
public:
    static constexpr const char *kClassName = "Util::SignalProxy";

    /// Connects `signal` of the sender to `slot` of the receiver, which must take a uint.
    SignalProxy(Object *sender, const char *signal, Object *receiver, const char *slot, uint32_t number);

    void sigProxy(uint32_t number) { emitSignal<kWithNumber>(number); }
    void sigProxy(bool on) { emitSignal<kWithFlag>(on); }
    void slotProxyUInt() { sigProxy(id); }
    void slotProxyBool() { sigProxy(flag); }
    static constexpr void (SignalProxy::*kWithNumber)(uint32_t) = &SignalProxy::sigProxy;
    static constexpr void (SignalProxy::*kWithFlag)(bool) = &SignalProxy::sigProxy;
    using Signals = MetaRows<Meta<kWithNumber, "uID">, Meta<kWithFlag, "bID">>;
    using Slots = MetaRows<Meta<&SignalProxy::slotProxyUInt>, Meta<&SignalProxy::slotProxyBool>>;

private:
    const uint32_t id;
    const bool flag = false;
};

/// As SignalProxy, for a signal with a float.
class SignalProxyFloat : public Reflected<SignalProxyFloat, Object> {
public:
    static constexpr const char *kClassName = "Util::SignalProxyFloat";

    /// The slot must take a uint and a float.
    SignalProxyFloat(Object *sender, const char *signal, Object *receiver, const char *slot, uint32_t number);

    void sigProxy(uint32_t number, float value) { emitSignal<&SignalProxyFloat::sigProxy>(number, value); }
    void slotProxy(float value) { sigProxy(id, value); }
    using Signals = MetaRows<Meta<&SignalProxyFloat::sigProxy, "uID">>;
    using Slots = MetaRows<Meta<&SignalProxyFloat::slotProxy, "fValue">>;

private:
    const uint32_t id;
};

} // namespace Util
