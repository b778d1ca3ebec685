#pragma once
#include <array>
#include <cstdint>
#include <vector>

#include "PluginBase/Util/OptionalIndex.h"
#include "PluginBase/Util/Shared.h"
#include "PluginBase/Util/String.h"

namespace DSP {

/// Which list a parameter stands in; host, editor and state address it by component, kind and list index.
enum class ParamKind : uint32_t { real = 0, boolean = 1, integer = 2 };

/// Component family of a parameter.
enum class ParamGroup : uint32_t {
    gain = 0,
    spectrum = 1,
    crossover = 2,
    maximizer = 3,
    dynamics = 4,
    global = 5
};

/// Whether a value belongs to the saved program.
enum Persistence : uint32_t { inProgram = 0, neverSavedBypass = 1, neverSavedSetting = 2 };

template <class V>
struct Range {
    V minimum, maximum;
};
using FloatRange = Range<float>;
using IntRange = Range<uint32_t>;

constexpr uint32_t kNoHighlight = 4; // also the number of highlight colours

/// Up to three numbers bound to a getter or setter, such as the band.
using BoundIndices = std::array<OptionalIndex, 3>;

/// The member function of T that reads a value; the form whose pointer is set is called, one index before
/// two, three and none.
template <class T, class V>
struct Getters {
    V (T::*plain)() const = nullptr;
    V (T::*one)(uint32_t) const = nullptr;
    V (T::*two)(uint32_t, uint32_t) const = nullptr;
    V (T::*three)(uint32_t, uint32_t, uint32_t) const = nullptr;

    V operator()(const T &owner, const BoundIndices &i) const
    {
        if (one) return (owner.*one)(i[0].value);
        if (two) return (owner.*two)(i[0].value, i[1].value);
        if (three) return (owner.*three)(i[0].value, i[1].value, i[2].value);
        return (owner.*plain)();
    }
};

/// The member function of T that writes a value, chosen as for Getters.
template <class T, class V>
struct Setters {
    void (T::*plain)(V) = nullptr;
    void (T::*one)(uint32_t, V) = nullptr;
    void (T::*two)(uint32_t, uint32_t, V) = nullptr;
    void (T::*three)(uint32_t, uint32_t, uint32_t, V) = nullptr;

    void operator()(T &owner, const BoundIndices &i, V value) const
    {
        if (one) return (owner.*one)(i[0].value, value);
        if (two) return (owner.*two)(i[0].value, i[1].value, value);
        if (three) return (owner.*three)(i[0].value, i[1].value, i[2].value, value);
        (owner.*plain)(value);
    }
};

/// One parameter of a component of class T. The value itself lives in T; the record says everything else
/// about it, once: host, editor, state and documentation read it here.
template <class T, class V>
struct Param {
    String name;
    String label; // unit shown behind the value, may be empty
    Range<V> range;
    V defaultValue;
    Getters<T, V> getters;
    Setters<T, V> setters;
    BoundIndices indices = {};
    ParamGroup group = ParamGroup::gain;
    bool automatable = false; // the host sees it
    bool showsMinusInf = false;
    uint32_t highlight = kNoHighlight;
    std::vector<String> valueNames = {}; // for a bool: text of false, text of true
    uint32_t persistence = inProgram;
    uint32_t scope = 0;
    OptionalIndex hostIndex = {};
    Util::Shared<bool> editing = false; // the user holds the control
};

} // namespace DSP
