#pragma once
#include <memory>
#include <vector>

#include "PluginBase/Util/MetaObject.h"
#include "PluginBase/Util/String.h"

/// Root of everything in the editor: has a name, owns children, and emits signals that are connected by the
/// text of their signatures to slots or signals of other objects. Texts are compared in connect() only;
/// delivery goes by index. Classes derive through Reflected (Reflected.h), which supplies the virtual part.
/// Thread   the window's, all of it
/// Lifetime an object may die while a signal of its own, or one that it receives, is being delivered: what is
///          still to come for it is dropped
class Object {
public:
    explicit Object(const String &name);
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;
    /// Deletes the children. Cuts all connections of every object that was connected to this one, also those
    /// to third objects, and all of its own.
    virtual ~Object();

    virtual const MetaObject *metaObject() const { return &meta(); }
    virtual const char *className() const { return metaObject()->className; }
    /// Emits the signal again with these values. False without such a signal, or with too few values.
    virtual bool invokeSignal(uint32_t index, SignalArgs &args);
    /// Calls the slot. False without such a slot, or with too few values.
    virtual bool invokeSlot(uint32_t index, SignalArgs &args);

    static const MetaObject &meta();
    using Signals = MetaRows<>;
    using Slots = MetaRows<>;

    const String &objectName() const { return name; }
    /// Takes ownership, once.
    void addChild(Object *child);

    /// Connects `signal` ("2" before its signature) to `member` ("1" before a slot's, "2" before a signal's),
    /// which takes the signal's parameters or fewer. Made twice it delivers twice. False, and nothing is
    /// connected, for a null, a text that is not found, or parameters that do not fit.
    [[nodiscard]] static bool connect(Object *sender, const char *signal, Object *receiver,
                                      const char *member);
    /// The same for connections that the editor needs: a refusal ends a debug build, and is counted in others.
    static void mustConnect(Object *sender, const char *signal, Object *receiver, const char *member);
    static uint32_t refusedConnections() { return refusals; }
    /// Cuts what fits; null fits everything. Stops at a connection that is just being delivered.
    static void disconnect(Object *sender, const char *signal, Object *receiver, const char *member);

protected:
    struct ConnectionList;
    /// The receivers of a signal; null if there never were any.
    ConnectionList *connectionsFor(uint32_t index) const;
    /// Calls them in the order of connection; those that a receiver adds meanwhile are called too.
    static void activate(ConnectionList *list, SignalArgs &args);

private:
    struct Connection;
    struct Delivery;
    struct Cut; // what a disconnect takes away
    using Connections = std::vector<std::unique_ptr<ConnectionList>>;

    bool invoke(const MetaEntry *row, const SignalArgs &args);
    void addConnection(uint32_t signal, Object *receiver, char kind, uint32_t index);
    bool cut(std::unique_ptr<ConnectionList> &list, const Cut &what);
    void dropReferencesTo(const Object *receiver);
    void dropAllConnections();
    void forgetSender(const Object *sender);

    String name;
    bool destroying = false;
    Connections connections;       // by global signal index; empty before the first connection
    std::vector<Object *> senders; // one entry for each connection to this object
    std::vector<Object *> children;
    static inline uint32_t refusals = 0;
};
