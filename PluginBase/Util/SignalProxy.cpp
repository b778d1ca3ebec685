#include "PluginBase/Util/SignalProxy.h"

namespace Util {

SignalProxy::SignalProxy(Object *sender, const char *signal, Object *receiver, const char *slot,
                         uint32_t number)
    : Reflected("SignalProxy"), id(number)
{
    connect(sender, signal, this, "1slotProxyUInt()");
    connect(this, "2sigProxy(uint)", receiver, slot);
    sender->addChild(this); // last: a constructor that throws leaves no child
}

std::span<const MetaEntry> SignalProxy::signalTable()
{
    static constexpr MetaParameter number[] = {{"uID", "uint"}}, on[] = {{"bID", "bool"}};
    static constexpr MetaMethod methods[] = {metaMethod<&SignalProxy::sigProxy>("sigProxy", number),
                                             metaMethod<&SignalProxy::sigProxyBool>("sigProxy", on)};
    static constexpr MetaEntry rows[] = {{"sigProxy(uint)", &methods[0]}, {"sigProxy(bool)", &methods[1]}};
    return rows;
}

std::span<const MetaEntry> SignalProxy::slotTable()
{
    static constexpr MetaMethod methods[] = {metaMethod<&SignalProxy::slotProxyUInt>("slotProxyUInt"),
                                             metaMethod<&SignalProxy::slotProxyBool>("slotProxyBool")};
    static constexpr MetaEntry rows[] = {{"slotProxyUInt()", &methods[0]}, {"slotProxyBool()", &methods[1]}};
    return rows;
}

SignalProxyFloat::SignalProxyFloat(Object *sender, const char *signal, Object *receiver, const char *slot,
                                   uint32_t number)
    : Reflected("SignalProxyFloat"), id(number)
{
    connect(sender, signal, this, "1slotProxy(float)");
    connect(this, "2sigProxy(uint, float)", receiver, slot);
    sender->addChild(this); // last: a constructor that throws leaves no child
}

std::span<const MetaEntry> SignalProxyFloat::signalTable()
{
    static constexpr MetaParameter both[] = {{"uID", "uint"}, {nullptr, "float"}};
    static constexpr MetaMethod proxy = metaMethod<&SignalProxyFloat::sigProxy>("sigProxy", both);
    static constexpr MetaEntry rows[] = {{"sigProxy(uint,float)", &proxy}};
    return rows;
}

std::span<const MetaEntry> SignalProxyFloat::slotTable()
{
    static constexpr MetaParameter value[] = {{"fValue", "float"}};
    static constexpr MetaMethod proxy = metaMethod<&SignalProxyFloat::slotProxy>("slotProxy", value);
    static constexpr MetaEntry rows[] = {{"slotProxy(float)", &proxy}};
    return rows;
}

} // namespace Util
