#pragma once
#include <cstddef>
#include <type_traits>
#include <utility>

#include "PluginBase/Util/Object.h"

namespace Reflection {

template <auto Method>
struct Caller;

/// Unpacks the leading values of an emission for a member function.
template <class Class, class... Parameters, void (Class::*Method)(Parameters...)>
struct Caller<Method> {
    static constexpr uint32_t kParameters = sizeof...(Parameters);
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

/// The record of a signal's emitter or of a slot.
template <auto Method>
constexpr MetaMethod metaMethod(const char *name)
{
    static_assert(Reflection::Caller<Method>::kParameters == 0, "the parameters have to be declared");
    return {name, nullptr, 0, &Reflection::Caller<Method>::call};
}
template <auto Method, size_t Count>
constexpr MetaMethod metaMethod(const char *name, const MetaParameter (&parameters)[Count])
{
    static_assert(Reflection::Caller<Method>::kParameters == Count);
    return {name, parameters, Count, &Reflection::Caller<Method>::call};
}

/// Supplies the virtual part of Object to a class from what it declares:
///
///     class Button : public Reflected<Button, Window> {
///     public:
///         static constexpr const char *kClassName = "UI::Native::Button";
///         static std::span<const MetaEntry> signalTable();
///         static std::span<const MetaEntry> slotTable();
///         void sigClicked() { emitSignal(0); } // by its row in signalTable()
///         void slotSwitch(bool on);
///     };
///     std::span<const MetaEntry> Button::slotTable()
///     {
///         static constexpr MetaParameter on[] = {{"bOn", "bool"}};
///         static constexpr MetaMethod switchMethod = metaMethod<&Button::slotSwitch>("slotSwitch", on);
///         static constexpr MetaEntry rows[] = {{"slotSwitch(bool)", &switchMethod}};
///         return rows;
///     }
///
/// A class without signals, or without slots, leaves that table out.
template <class Self, class Base>
class Reflected : public Base {
public:
    using Base::Base;

    static const MetaObject &meta()
    {
        static const MetaObject record(&Base::meta(), Self::kClassName,
                                       ownTable(&Self::signalTable, &Base::signalTable),
                                       ownTable(&Self::slotTable, &Base::slotTable));
        return record;
    }
    const MetaObject *metaObject() const override { return &meta(); }
    const char *className() const override { return Self::kClassName; }

protected:
    /// Emits the signal in a row of the class's own table; without a receiver nothing is allocated.
    template <class... Values>
    void emitSignal(uint32_t row, const Values &...values)
    {
        auto *list = this->connectionsFor(meta().signalOffset() + row);
        if (!list) return;
        SignalArgs args{static_cast<const void *>(&values)...};
        this->activate(list, args);
    }

private:
    using Table = std::span<const MetaEntry> (*)();
    /// None where the class has merely inherited its base class's.
    static std::span<const MetaEntry> ownTable(Table table, Table inherited)
    {
        return table == inherited ? std::span<const MetaEntry>() : table();
    }
};
