#pragma once
#include <memory>
#include <vector>

#include "PluginBase/Util/MetaObject.h"
#include "PluginBase/Util/String.h"

/// Base class of everything in the editor: has a name, owns children, and emits signals that are connected by
/// signature to slots or signals of other objects. Signatures are compared in connect() only; delivery uses
/// indices. Classes derive through Reflected (Reflected.h), which implements the virtual functions.
/// Thread   the window thread only
/// Lifetime an object may be destroyed while a signal that it sends or receives is being delivered; its
///          remaining deliveries are dropped
class Object {
public:
    explicit Object(const String &name);
    Object(const Object &) = delete;
    Object &operator=(const Object &) = delete;
    /// Deletes the children and all connections of this object. Senders that were connected to this object
    /// lose all their connections, including those to other receivers.
    virtual ~Object();

    virtual const MetaObject *metaObject() const { return &meta(); }
    virtual const char *className() const { return metaObject()->className; }
    /// Emits the signal with these arguments. False if the index is unknown or arguments are missing.
    virtual bool invokeSignal(uint32_t index, SignalArgs &args);
    /// Calls the slot. False if the index is unknown or arguments are missing.
    virtual bool invokeSlot(uint32_t index, SignalArgs &args);

    static const MetaObject &meta();
    using Signals = MetaRows<>;
    using Slots = MetaRows<>;

    const String &objectName() const { return name; }
    /// Takes ownership; adding the same child again has no effect.
    void addChild(Object *child);

    /// Connects `signal` (prefix "2") to `member` (prefix "1" for a slot, "2" for a signal), which takes the
    /// first parameters of the signal, all of them or none. Connecting twice delivers twice. Returns false
    /// and does not connect if a pointer is null, a signature is unknown or the parameters do not match.
    [[nodiscard]] static bool connect(Object *sender, const char *signal, Object *receiver,
                                      const char *member);
    /// As connect(), for connections that the editor needs: a refusal aborts a debug build and is counted in
    /// refusedConnections() in others.
    static void mustConnect(Object *sender, const char *signal, Object *receiver, const char *member);
    static uint32_t refusedConnections() { return refusals; }
    /// Removes matching connections; null matches everything. Stops at a connection that is being delivered.
    static void disconnect(Object *sender, const char *signal, Object *receiver, const char *member);

protected:
    struct ConnectionList;
    /// The receivers of a signal; may be null if there are none.
    ConnectionList *connectionsFor(uint32_t index) const;
    /// Calls the receivers in the order of connection, including those that a receiver adds meanwhile.
    static void activate(ConnectionList *list, SignalArgs &args);

private:
    struct Connection;
    struct Delivery;
    struct Cut; // selects the connections to remove
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
    std::vector<Object *> senders; // one entry per connection to this object
    std::vector<Object *> children;
    static inline uint32_t refusals = 0;
};
