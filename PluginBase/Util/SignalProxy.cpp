#include "PluginBase/Util/SignalProxy.h"

namespace Util {

namespace {

/// Puts a proxy between its sender and a receiver, by the texts of its own slot and signal.
void insert(Object *sender, const char *signal, Object *proxy, const char *in, const char *out,
            Object *receiver, const char *slot)
{
    Object::mustConnect(sender, signal, proxy, in);
    Object::mustConnect(proxy, out, receiver, slot);
    sender->addChild(proxy); // last: a constructor that throws leaves no child
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
