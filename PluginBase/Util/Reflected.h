#pragma once
#include <algorithm>
#include <string_view>
#include <type_traits>
#include <utility>

#include "PluginBase/Util/Object.h"

namespace Reflection {

/// Spelling of a parameter type in a signature; null for types that signals cannot carry.
template <class T>
constexpr const char *kTypeText = nullptr;
template <>
inline constexpr const char *kTypeText<uint32_t> = "uint";
template <>
inline constexpr const char *kTypeText<float> = "float";
template <>
inline constexpr const char *kTypeText<bool> = "bool";
template <>
inline constexpr const char *kTypeText<const String &> = "const String&";

/// A string literal as a template argument.
template <size_t N>
struct Text {
    consteval Text(const char (&from)[N]) { std::copy_n(from, N, characters); }
    char characters[N];
};

template <auto Method>
consteval std::string_view nameOf()
{
    constexpr std::string_view function = __PRETTY_FUNCTION__; // contains "Method = &Class::name"
    constexpr size_t end = function.find_first_of(";]", function.find("Method = "));
    constexpr size_t begin = function.rfind(':', end) + 1;
    static_assert(begin != 0 && begin < end);
    return function.substr(begin, end - begin);
}

template <auto Method>
struct Member;

/// A signal's emitter or a slot. Its signature is derived from the C++ declaration at compile time.
template <class Owner, class... Parameters, void (Owner::*Method)(Parameters...)>
struct Member<Method> {
    using Class = Owner;
    static constexpr uint32_t kParameters = sizeof...(Parameters);
    static constexpr std::string_view kName = nameOf<Method>();

    /// The prefixed signature for Object::connect(), e.g. "2sigProxy(uint,float)" or "1slotProxyUInt()".
    static constexpr auto kText = [] {
        constexpr size_t kTypes = (std::string_view(kTypeText<Parameters>).size() + ... + 0);
        constexpr size_t kCommas = kParameters == 0 ? 0 : kParameters - 1;
        std::array<char, kName.size() + kTypes + kCommas + sizeof "1()"> text{};
        char *end = text.data();
        const auto append = [&](std::string_view part) { end = std::copy(part.begin(), part.end(), end); };
        append(kName.starts_with("sig") ? "2" : "1");
        append(kName);
        append("(");
        [[maybe_unused]] uint32_t count = 0;
        ((append(count++ == 0 ? "" : ","), append(kTypeText<Parameters>)), ...);
        append(")");
        return text;
    }();

    static constexpr std::array<MetaParameter, kParameters>
    parameters([[maybe_unused]] const std::array<const char *, kParameters> &names)
    {
        [[maybe_unused]] size_t i = 0;
        return {{{names[i++], kTypeText<Parameters>}...}};
    }
    /// Calls the method with the first arguments of an emission.
    static void call(Object &object, const SignalArgs &args)
    {
        callWith(static_cast<Class &>(object), args, std::index_sequence_for<Parameters...>());
    }

private:
    template <size_t... I>
    static void callWith(Class &object, [[maybe_unused]] const SignalArgs &args, std::index_sequence<I...>)
    {
        (object.*Method)(*static_cast<const std::remove_cvref_t<Parameters> *>(args[I])...);
    }
};

} // namespace Reflection

/// A row of a class's table: a signal's emitter or a slot, with its parameter names.
template <auto Method, Reflection::Text... Names>
struct Meta {
    using Member = Reflection::Member<Method>;
    static constexpr auto parameters = Member::parameters({Names.characters...});
    static constexpr MetaMethod method = {Member::kName, parameters.data(), Member::kParameters,
                                          &Member::call};
    static constexpr MetaEntry entry = {Member::kText.data() + 1, &method};
};

/// The prefixed signature of a signal or slot for Object::connect().
template <auto Method>
inline constexpr const char *kConnectionText = Reflection::Member<Method>::kText.data();

/// Connects a signal to a slot or to another signal with Object::mustConnect().
template <auto Signal, auto Receiving>
void wire(typename Reflection::Member<Signal>::Class *sender,
          typename Reflection::Member<Receiving>::Class *receiver)
{
    Object::mustConnect(sender, kConnectionText<Signal>, receiver, kConnectionText<Receiving>);
}

/// Implements Object's virtual functions from a class's declarations:
///
///     class Button : public Reflected<Button, Window> {
///     public:
///         static constexpr const char *kClassName = "UI::Native::Button";
///         void sigClicked() { emitSignal<&Button::sigClicked>(); }
///         void slotSwitch(bool on);
///         using Signals = MetaRows<Meta<&Button::sigClicked>>;
///         using Slots = MetaRows<Meta<&Button::slotSwitch, "bOn">>;
///     };
///
/// Signal names begin with "sig". A class that adds no signals, or no slots, omits that table.
template <class Self, class Base>
class Reflected : public Base {
public:
    using Base::Base;

    static const MetaObject &meta()
    {
        static const MetaObject record(&Base::meta(), Self::kClassName,
                                       own<typename Self::Signals, typename Base::Signals>(),
                                       own<typename Self::Slots, typename Base::Slots>());
        return record;
    }
    const MetaObject *metaObject() const override { return &meta(); }

protected:
    /// Emits a signal that `Self` declares. Does not allocate if there is no receiver.
    template <auto Signal, class... Values>
    void emitSignal(const Values &...values)
    {
        constexpr uint32_t kRow = Self::Signals::template row<Reflection::Member<Signal>>();
        auto *list = this->connectionsFor(meta().signalOffset() + kRow);
        if (!list) return;
        SignalArgs args{static_cast<const void *>(&values)...};
        this->activate(list, args);
    }

private:
    /// Empty if the class inherits the table of its base class.
    template <class Rows, class Inherited>
    static std::span<const MetaEntry> own()
    {
        if constexpr (std::is_same_v<Rows, Inherited>)
            return {};
        else
            return Rows::entries;
    }
};
