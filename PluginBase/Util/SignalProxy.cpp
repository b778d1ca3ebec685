#include "PluginBase/Util/SignalProxy.h"

namespace Util {

namespace {

/// Connects a sender to a receiver through a proxy; `in` and `out` are the proxy's slot and signal.
void insert(Object *sender, const char *signal, Object *proxy, const char *in, const char *out,
            Object *receiver, const char *slot)
{
    Object::mustConnect(sender, signal, proxy, in);
    Object::mustConnect(proxy, out, receiver, slot);
    sender->addChild(proxy); // last: a throwing constructor must not leave a child
}

} // namespace

SignalProxy::SignalProxy(Object *sender, const char *signal, Object *receiver, const char *slot,
                         uint32_t number)
    : Reflected("SignalProxy"), id(number)
{
    insert(sender, signal, this, kConnectionText<&SignalProxy::slotProxyUInt>, kConnectionText<kWithNumber>,
           receiver, slot);
}

SignalProxyFloat::SignalProxyFloat(Object *sender, const char *signal, Object *receiver, const char *slot,
                                   uint32_t number)
    : Reflected("SignalProxyFloat"), id(number)
{
    insert(sender, signal, this, kConnectionText<&SignalProxyFloat::slotProxy>,
           kConnectionText<&SignalProxyFloat::sigProxy>, receiver, slot);
}

} // namespace Util
