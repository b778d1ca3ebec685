#pragma once
#include "dsp/component/Component.h"

/// One name for the parameter operations of all kinds, for code that treats kinds alike. V is the type of the
/// value; the extra list is not among them.
namespace DSP {

template <class V>
struct ParameterAccess;

template <>
struct ParameterAccess<float> {
    static constexpr ParamKind kind = ParamKind::real;
    static uint32_t count(const Component &c) { return c.numFloatParams(); }
    static const String &unit(const Component &c, uint32_t i) { return c.floatParamLabel(i); }
    static Range<float> range(const Component &c, uint32_t i) { return c.floatParamRange(i); }
    static float value(const Component &c, uint32_t i) { return c.floatParamValue(i); }
    static float initial(const Component &c, uint32_t i) { return c.floatParamDefault(i); }
    static void set(Component &c, uint32_t i, float v) { c.setFloatParamValue(i, v); }
    static bool isSaved(const Component &c, uint32_t i) { return c.floatParamPersistence(i) == inProgram; }
    static bool isAutomatable(const Component &c, uint32_t i) { return c.floatParamAutomatable(i); }
    static OptionalIndex hostIndex(const Component &c, uint32_t i) { return c.floatParamHostIndex(i); }
    static void setHostIndex(Component &c, uint32_t i, uint32_t index) { c.setFloatParamHostIndex(i, index); }
    static bool isEdited(const Component &c, uint32_t i) { return c.floatParamEditing(i); }
};

template <>
struct ParameterAccess<bool> {
    static constexpr ParamKind kind = ParamKind::boolean;
    static uint32_t count(const Component &c) { return c.numBoolParams(); }
    static const String &unit(const Component &c, uint32_t i) { return c.boolParamLabel(i); }
    static Range<bool> range(const Component &, uint32_t) { return {false, true}; }
    static bool value(const Component &c, uint32_t i) { return c.boolParamValue(i); }
    static bool initial(const Component &c, uint32_t i) { return c.boolParamDefault(i); }
    static void set(Component &c, uint32_t i, bool v) { c.setBoolParamValue(i, v); }
    static bool isSaved(const Component &c, uint32_t i) { return c.boolParamPersistence(i) == inProgram; }
    static bool isAutomatable(const Component &c, uint32_t i) { return c.boolParamAutomatable(i); }
    static OptionalIndex hostIndex(const Component &c, uint32_t i) { return c.boolParamHostIndex(i); }
    static void setHostIndex(Component &c, uint32_t i, uint32_t index) { c.setBoolParamHostIndex(i, index); }
    static bool isEdited(const Component &c, uint32_t i) { return c.boolParamEditing(i); }
};

template <>
struct ParameterAccess<uint32_t> {
    static constexpr ParamKind kind = ParamKind::integer;
    static uint32_t count(const Component &c) { return c.numIntParams(); }
    static const String &unit(const Component &c, uint32_t i) { return c.intParamLabel(i); }
    static Range<uint32_t> range(const Component &c, uint32_t i) { return c.intParamRange(i); }
    static uint32_t value(const Component &c, uint32_t i) { return c.intParamValue(i); }
    static uint32_t initial(const Component &c, uint32_t i) { return c.intParamDefault(i); }
    static void set(Component &c, uint32_t i, uint32_t v) { c.setIntParamValue(i, v); }
    static bool isSaved(const Component &c, uint32_t i) { return c.intParamPersistence(i) == inProgram; }
    static bool isAutomatable(const Component &c, uint32_t i) { return c.intParamAutomatable(i); }
    static OptionalIndex hostIndex(const Component &c, uint32_t i) { return c.intParamHostIndex(i); }
    static void setHostIndex(Component &c, uint32_t i, uint32_t index) { c.setIntParamHostIndex(i, index); }
    static bool isEdited(const Component &c, uint32_t i) { return c.intParamEditing(i); }
};

} // namespace DSP
