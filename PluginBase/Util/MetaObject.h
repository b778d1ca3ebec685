#pragma once
#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

#include "PluginBase/Util/OptionalIndex.h"

class Object;
class String;

/// Pointers to the arguments of one emission. They point into the emitter's stack frame, so they are valid
/// during delivery only.
using SignalArgs = std::vector<const void *>;

struct MetaParameter {
    const char *name; // may be null
    const char *type; // "uint", "float", "bool", "const String&"
};

/// The declaration of a signal or slot, and a function that calls it.
struct MetaMethod {
    std::string_view name;
    const MetaParameter *parameters; // null if none
    uint32_t parameterCount;
    /// Calls it on an object of the declaring class; `args` holds at least `parameterCount` values.
    void (*call)(Object &object, const SignalArgs &args);
};

/// A row of a class's table; its position in the table determines its index.
struct MetaEntry {
    const char *signature; // "sigProxy(uint,float)"
    const MetaMethod *method;
};

/// The rows that a class adds to its base class's, each a Meta (Reflected.h).
template <class... Rows>
struct MetaRows {
    static constexpr std::array<MetaEntry, sizeof...(Rows)> entries = {Rows::entry...};
    /// Position of a member's row.
    template <class Member>
    static consteval uint32_t row()
    {
        constexpr std::array<bool, sizeof...(Rows)> kMatches = {
            std::is_same_v<typename Rows::Member, Member>...};
        constexpr auto kFound = std::find(kMatches.begin(), kMatches.end(), true) - kMatches.begin();
        static_assert(kFound < sizeof...(Rows), "the class's table has no such row");
        return kFound;
    }
};

/// The signals and slots of a class derived from Object. Indices are global: a class's own rows follow those
/// of its base class. There is one record per class, created at first use on the window thread.
class MetaObject {
public:
    MetaObject(const MetaObject *parent, const char *className, std::span<const MetaEntry> signals,
               std::span<const MetaEntry> slots);
    MetaObject(const MetaObject &) = delete;
    MetaObject &operator=(const MetaObject &) = delete;

    /// Global index of a signature without its prefix. A row of a derived class hides a base class's row with
    /// the same signature.
    OptionalIndex findSignal(std::string_view signature) const { return signals.find(signature); }
    OptionalIndex findSlot(std::string_view signature) const { return slots.find(signature); }
    /// Null if the index is out of range.
    const MetaEntry *signal(uint32_t index) const { return signals.row(index); }
    const MetaEntry *slot(uint32_t index) const { return slots.row(index); }
    /// Number of signals of the class and all its base classes.
    uint32_t signalCount() const { return signals.offset + static_cast<uint32_t>(signals.rows.size()); }
    uint32_t signalOffset() const { return signals.offset; }
    uint32_t slotOffset() const { return slots.offset; }

    const MetaObject *const parent;
    const char *const className;

private:
    struct Table {
        Table(const Table *inherited, std::span<const MetaEntry> own);
        OptionalIndex find(std::string_view signature) const;
        const MetaEntry *row(uint32_t index) const;

        const Table *base;
        std::span<const MetaEntry> rows;
        std::map<std::string_view, uint32_t> map; // to the position in `rows`; the last of duplicates
        uint32_t offset;                          // global index of the first row
    };
    Table signals, slots;
};
