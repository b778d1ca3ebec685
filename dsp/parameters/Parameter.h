#pragma once
#include <array>
#include <cstdint>
#include <variant>
#include <vector>

#include "PluginBase/Util/OptionalIndex.h"
#include "PluginBase/Util/Shared.h"
#include "PluginBase/Util/String.h"
#include "dsp/numerics/Math.h"

namespace DSP {

/// Type of a parameter. Host, editor and saved state address a parameter by component, kind and index in the
/// component's list of that kind. Extras are integers that neither host nor editor uses.
enum class ParamKind : uint32_t { real = 0, boolean = 1, integer = 2, extra = 3 };
constexpr ParamKind kParamKinds[] = {ParamKind::real, ParamKind::boolean, ParamKind::integer};
constexpr ParamKind kParamLists[] = {ParamKind::real, ParamKind::boolean, ParamKind::integer,
                                     ParamKind::extra};

/// A value of any kind; the alternatives have the order of ParamKind.
using ParameterValue = std::variant<float, bool, uint32_t>;

template <class V>
constexpr auto kKindOf = static_cast<ParamKind>(ParameterValue(V{}).index());

/// Exact: a double can represent all values of all kinds.
inline double toNumber(const ParameterValue &value)
{
    return std::visit([](auto v) { return static_cast<double>(v); }, value);
}
/// For bools, 0.5 and above is true. Integers are rounded, halves away from zero.
inline ParameterValue fromNumber(ParamKind kind, double number)
{
    if (kind == ParamKind::real) return static_cast<float>(number);
    if (kind == ParamKind::boolean) return number >= 0.5;
    return Math::roundHalfAwayFromZero(number);
}

/// Stage or meter to which a parameter belongs.
enum class ParamGroup : uint32_t {
    gain = 0,
    spectrum = 1,
    crossover = 2,
    maximizer = 3,
    dynamics = 4,
    global = 5
};

/// Whether a program contains the parameter's value.
enum Persistence : uint32_t { inProgram = 0, neverSavedBypass = 1, neverSavedSetting = 2 };

template <class V>
struct Range {
    V minimum, maximum;
};
using FloatRange = Range<float>;
using IntRange = Range<uint32_t>;

constexpr uint32_t kNoHighlight = 4; // also the number of highlight colours

/// Up to three index arguments for a getter or setter, such as the band.
using BoundIndices = std::array<OptionalIndex, 3>;

/// The member function of T that reads a value. Set one of the pointers, by the number of index arguments.
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

/// The member function of T that writes a value. Set one of the pointers, as for Getters.
template <class T, class V>
struct Setters {
    bool (T::*plain)(V) = nullptr;
    bool (T::*one)(uint32_t, V) = nullptr;
    bool (T::*two)(uint32_t, uint32_t, V) = nullptr;
    bool (T::*three)(uint32_t, uint32_t, uint32_t, V) = nullptr;

    bool operator()(T &owner, const BoundIndices &i, V value) const
    {
        if (one) return (owner.*one)(i[0].value, value);
        if (two) return (owner.*two)(i[0].value, i[1].value, value);
        if (three) return (owner.*three)(i[0].value, i[1].value, i[2].value, value);
        return (owner.*plain)(value);
    }
};

/// Description of a parameter, without its value. Used by host, editor, saved state and documentation.
struct ParamRecord {
    String name;
    String label; // unit shown after the value, may be empty
    Range<ParameterValue> range;
    ParameterValue defaultValue;
    ParamGroup group = ParamGroup::gain;
    BoundIndices indices = {};
    bool automatable = false; // exposed to the host
    bool showsMinusInf = false;
    uint32_t highlight = kNoHighlight;
    std::vector<String> valueNames = {}; // for a bool: the names of false and true
    uint32_t persistence = inProgram;
    uint32_t scope = 0;
    OptionalIndex hostIndex = {};
    Util::Shared<bool> editing = false; // the user is moving the control

    ParamKind kind() const { return static_cast<ParamKind>(defaultValue.index()); }
    bool isSaved() const { return persistence == inProgram; }
    bool hasValueNames() const
    {
        return static_cast<double>(valueNames.size()) ==
               toNumber(range.maximum) - toNumber(range.minimum) + 1.0;
    }
    /// Maps a value linearly from its range to 0 ... 1.
    double toShare(const ParameterValue &value) const
    {
        const double low = toNumber(range.minimum);
        return (toNumber(value) - low) / (toNumber(range.maximum) - low);
    }
    ParameterValue fromShare(double share) const
    {
        const double low = toNumber(range.minimum);
        return fromNumber(kind(), low + share * (toNumber(range.maximum) - low));
    }
};

/// A parameter of component class T, which stores the value.
template <class T, class V>
struct Param : ParamRecord {
    Getters<T, V> getters;
    Setters<T, V> setters;
};

} // namespace DSP
