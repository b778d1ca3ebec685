#include "PluginBase/Util/Object.h"

#include <algorithm>
#include <cassert>
#include <string>
#include <string_view>

namespace {

constexpr char kSlot = '1', kSignal = '2';

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isPunctuation(char c) { return c == ',' || c == '(' || c == ')'; }

/// Removes redundant spaces from a prefixed signature; returns "" if the prefix is missing.
std::string normalised(const char *text)
{
    if (!text || (*text != kSlot && *text != kSignal)) return {};
    std::string_view rest(text + 1);
    while (!rest.empty() && isBlank(rest.front())) rest.remove_prefix(1);
    while (!rest.empty() && isBlank(rest.back())) rest.remove_suffix(1);
    std::string result(1, *text);
    for (size_t i = 0; i < rest.size(); ++i) {
        const char c = rest[i], next = i + 1 < rest.size() ? rest[i + 1] : '\0';
        if (isBlank(c) && (isBlank(next) || isPunctuation(next))) continue;
        result += c;
        if (isPunctuation(c) && isBlank(next)) ++i;
    }
    return result;
}

/// The part of a signature after its opening parenthesis.
std::string_view parameters(std::string_view signature)
{
    const size_t open = signature.find('(');
    return open == std::string_view::npos ? std::string_view() : signature.substr(open + 1);
}

/// True if a member's parameters are the first parameters of the signal, all of them or none.
bool isCompatible(std::string_view signal, std::string_view member)
{
    const std::string_view given = parameters(signal), taken = parameters(member);
    if (taken == ")" || taken == given) return true;
    if (taken.empty() || taken.size() >= given.size()) return false;
    const size_t shared = taken.size() - 1;
    return given.substr(0, shared) == taken.substr(0, shared) && given[shared] == ',';
}

/// The row of a prefixed signature in an object's class; null if not found.
struct Member {
    char kind = 0;
    OptionalIndex index;
    const MetaEntry *row = nullptr;

    Member(const Object *object, const char *text)
    {
        const std::string normal = normalised(text);
        const MetaObject *meta = object->metaObject();
        if (normal.empty() || !meta) return;
        kind = normal[0];
        const std::string_view signature = std::string_view(normal).substr(1);
        index = kind == kSlot ? meta->findSlot(signature) : meta->findSignal(signature);
        if (index.found) row = kind == kSlot ? meta->slot(index.value) : meta->signal(index.value);
    }
};

} // namespace

struct Object::Connection {
    Object *receiver; // null once it is destroyed
    const char *member;
    char kind;
    uint32_t index;
};

struct Object::ConnectionList {
    std::vector<std::unique_ptr<Connection>> connections;
    uint32_t deliveries = 0; // nesting depth of deliveries in progress
    bool abandoned = false;  // the sender is destroyed: the last delivery deletes the list
};

/// Counts a delivery in progress, also if a receiver throws.
struct Object::Delivery {
    explicit Delivery(ConnectionList *delivered) : list(delivered) { ++list->deliveries; }
    ~Delivery()
    {
        if (--list->deliveries == 0 && list->abandoned) delete list;
    }
    Delivery(const Delivery &) = delete;
    Delivery &operator=(const Delivery &) = delete;

private:
    ConnectionList *const list;
};

struct Object::Cut {
    Object *receiver = nullptr;   // null: any
    const char *member = nullptr; // the row's signature; null: any
};

Object::Object(const String &objectName) : name(objectName) {}

Object::~Object()
{
    destroying = true;
    for (Object *&child : children) {
        delete child;
        child = nullptr;
    }
    const std::vector<Object *> sendersOfMine = senders;
    for (Object *sender : sendersOfMine)
        if (std::find(senders.begin(), senders.end(), sender) != senders.end())
            disconnect(sender, nullptr, nullptr, nullptr);
    // Connections being delivered cannot be removed, so they must not keep a dangling receiver.
    const std::vector<Object *> stillSending = senders;
    for (Object *sender : stillSending) sender->dropReferencesTo(this);
    senders.clear();
    disconnect(this, nullptr, nullptr, nullptr);
    dropAllConnections();
}

const MetaObject &Object::meta()
{
    static const MetaObject record(nullptr, "Object", {}, {});
    return record;
}

bool Object::invoke(const MetaEntry *row, const SignalArgs &args)
{
    if (!row || args.size() < row->method->parameterCount) return false;
    row->method->call(*this, args);
    return true;
}

bool Object::invokeSignal(uint32_t index, SignalArgs &args)
{
    return invoke(metaObject()->signal(index), args);
}

bool Object::invokeSlot(uint32_t index, SignalArgs &args) { return invoke(metaObject()->slot(index), args); }

void Object::addChild(Object *child)
{
    if (std::find(children.begin(), children.end(), child) == children.end()) children.push_back(child);
}

bool Object::connect(Object *sender, const char *signal, Object *receiver, const char *member)
{
    if (!sender || !signal || !receiver || !member) return false;
    const Member from(sender, signal), to(receiver, member);
    if (from.kind != kSignal || !from.row || !to.row) return false;
    if (!isCompatible(from.row->signature, to.row->signature)) return false;
    sender->addConnection(from.index.value, receiver, to.kind, to.index.value);
    return true;
}

void Object::mustConnect(Object *sender, const char *signal, Object *receiver, const char *member)
{
    if (connect(sender, signal, receiver, member)) return;
    assert(!"a connection of the editor was refused");
    ++refusals;
}

void Object::addConnection(uint32_t signal, Object *receiver, char kind, uint32_t index)
{
    const MetaObject *receiverClass = receiver->metaObject();
    const MetaEntry *row = kind == kSlot ? receiverClass->slot(index) : receiverClass->signal(index);
    if (connections.empty()) connections.resize(metaObject()->signalCount());
    if (destroying || signal >= connections.size()) return;
    auto &list = connections[signal];
    if (!list) list = std::make_unique<ConnectionList>();
    receiver->senders.reserve(receiver->senders.size() + 1); // may throw: before either side is connected
    list->connections.push_back(
        std::make_unique<Connection>(Connection{receiver, row->signature, kind, index}));
    receiver->senders.push_back(this);
}

Object::ConnectionList *Object::connectionsFor(uint32_t index) const
{
    return index < connections.size() ? connections[index].get() : nullptr;
}

void Object::activate(ConnectionList *list, SignalArgs &args)
{
    const Delivery running(list);
    // Size and entries are reread each time: receivers may connect, and any object may be destroyed.
    for (size_t i = 0; i < list->connections.size(); ++i) {
        const Connection connection = *list->connections[i];
        if (!connection.receiver) continue;
        if (connection.kind == kSignal)
            connection.receiver->invokeSignal(connection.index, args);
        else
            connection.receiver->invokeSlot(connection.index, args);
    }
}

void Object::disconnect(Object *sender, const char *signal, Object *receiver, const char *member)
{
    if (!sender || (member && !receiver) || sender->connections.empty()) return;
    Cut what{receiver, nullptr};
    if (member) {
        const Member to(receiver, member);
        if (!to.row) return;
        what.member = to.row->signature;
    }
    if (!signal) {
        for (auto &list : sender->connections)
            if (list && !sender->cut(list, what)) return;
        return;
    }
    const Member from(sender, signal);
    if (from.kind != kSignal || !from.row || !sender->connectionsFor(from.index.value)) return;
    sender->cut(sender->connections[from.index.value], what);
}

/// Returns false if it stopped at a connection that is being delivered.
bool Object::cut(std::unique_ptr<ConnectionList> &list, const Cut &what)
{
    auto &rows = list->connections;
    for (size_t i = 0; i < rows.size();) {
        Connection &connection = *rows[i];
        const bool fits = (!what.receiver || connection.receiver == what.receiver) &&
                          (!what.member || std::string_view(connection.member) == what.member);
        if (!fits) {
            ++i;
            continue;
        }
        if (list->deliveries > 0) return false;
        if (connection.receiver) connection.receiver->forgetSender(this);
        rows.erase(rows.begin() + static_cast<ptrdiff_t>(i));
    }
    if (rows.empty()) list.reset();
    return true;
}

// Removes only one entry: `senders` has one per connection, and the destructor needs the remaining ones.
void Object::forgetSender(const Object *sender)
{
    const auto first = std::find(senders.begin(), senders.end(), sender);
    if (first != senders.end()) senders.erase(first);
}

void Object::dropReferencesTo(const Object *receiver)
{
    for (auto &list : connections)
        if (list)
            for (auto &connection : list->connections)
                if (connection->receiver == receiver) connection->receiver = nullptr;
}

void Object::dropAllConnections()
{
    for (auto &list : connections) {
        if (!list) continue;
        for (auto &connection : list->connections) {
            if (connection->receiver) connection->receiver->forgetSender(this);
            connection->receiver = nullptr;
        }
        list->abandoned = list->deliveries > 0;
        if (list->abandoned) (void)list.release(); // the delivery deletes it
    }
    connections.clear();
}
