#pragma once
#include <vector>

#include "dsp/component/Component.h"

namespace DSP {

/// The parameter operations of a concrete class T over its lists of records. T's constructor fills the lists,
/// sets `owner` and calls finishConstruction; afterwards the lists keep their size.
template <class T>
class ComponentImpl : public Component {
public:
    using FloatParam = Param<T, float>;
    using BoolParam = Param<T, bool>;
    using IntParam = Param<T, uint32_t>;

    // clang-format off
    uint32_t numFloatParams() const override { return count(floatParams); }
    float floatParamValue(uint32_t i) const override { return value(floatParams[i]); }
    void setFloatParamValue(uint32_t i, float v) override { setValue(floatParams[i], v); }
    const String &floatParamName(uint32_t i) const override { return floatParams[i].name; }
    const String &floatParamLabel(uint32_t i) const override { return floatParams[i].label; }
    FloatRange floatParamRange(uint32_t i) const override { return floatParams[i].range; }
    float floatParamDefault(uint32_t i) const override { return floatParams[i].defaultValue; }
    ParamGroup floatParamGroup(uint32_t i) const override { return floatParams[i].group; }
    bool floatParamAutomatable(uint32_t i) const override { return floatParams[i].automatable; }
    uint32_t floatParamPersistence(uint32_t i) const override { return floatParams[i].persistence; }
    uint32_t floatParamScope(uint32_t i) const override { return floatParams[i].scope; }
    bool floatParamShowsMinusInf(uint32_t i) const override { return floatParams[i].showsMinusInf; }
    void setFloatParamShowsMinusInf(uint32_t i, bool on) override { floatParams[i].showsMinusInf = on; }
    uint32_t floatParamHighlight(uint32_t i) const override { return floatParams[i].highlight; }
    void setFloatParamHighlight(uint32_t i, uint32_t colour) override { setHighlight(floatParams[i], colour); }
    void setFloatParamHostIndex(uint32_t i, OptionalIndex index) override { floatParams[i].hostIndex = index; }
    OptionalIndex floatParamHostIndex(uint32_t i) const override { return floatParams[i].hostIndex; }
    void setFloatParamEditing(uint32_t i, bool on) override { floatParams[i].editing = on; }
    bool floatParamEditing(uint32_t i) const override { return floatParams[i].editing; }

    uint32_t numBoolParams() const override { return count(boolParams); }
    bool boolParamValue(uint32_t i) const override { return value(boolParams[i]); }
    void setBoolParamValue(uint32_t i, bool v) override { setValue(boolParams[i], v); }
    const String &boolParamName(uint32_t i) const override { return boolParams[i].name; }
    const String &boolParamLabel(uint32_t i) const override { return boolParams[i].label; }
    bool boolParamDefault(uint32_t i) const override { return boolParams[i].defaultValue; }
    ParamGroup boolParamGroup(uint32_t i) const override { return boolParams[i].group; }
    bool boolParamAutomatable(uint32_t i) const override { return boolParams[i].automatable; }
    uint32_t boolParamPersistence(uint32_t i) const override { return boolParams[i].persistence; }
    uint32_t boolParamScope(uint32_t i) const override { return boolParams[i].scope; }
    uint32_t boolParamHighlight(uint32_t i) const override { return boolParams[i].highlight; }
    void setBoolParamHighlight(uint32_t i, uint32_t colour) override { setHighlight(boolParams[i], colour); }
    void setBoolParamHostIndex(uint32_t i, OptionalIndex index) override { boolParams[i].hostIndex = index; }
    OptionalIndex boolParamHostIndex(uint32_t i) const override { return boolParams[i].hostIndex; }
    bool boolParamHasValueNames(uint32_t i) const override { return boolParams[i].valueNames.size() == 2; }
    void boolParamValueNames(uint32_t i, std::vector<String> &out) const override { out = boolParams[i].valueNames; }
    void setBoolParamEditing(uint32_t i, bool on) override { boolParams[i].editing = on; }
    bool boolParamEditing(uint32_t i) const override { return boolParams[i].editing; }

    uint32_t numIntParams() const override { return count(intParams); }
    uint32_t intParamValue(uint32_t i) const override { return value(intParams[i]); }
    void setIntParamValue(uint32_t i, uint32_t v) override { setValue(intParams[i], v); }
    const String &intParamName(uint32_t i) const override { return intParams[i].name; }
    const String &intParamLabel(uint32_t i) const override { return intParams[i].label; }
    IntRange intParamRange(uint32_t i) const override { return intParams[i].range; }
    uint32_t intParamDefault(uint32_t i) const override { return intParams[i].defaultValue; }
    ParamGroup intParamGroup(uint32_t i) const override { return intParams[i].group; }
    bool intParamAutomatable(uint32_t i) const override { return intParams[i].automatable; }
    uint32_t intParamPersistence(uint32_t i) const override { return intParams[i].persistence; }
    uint32_t intParamScope(uint32_t i) const override { return intParams[i].scope; }
    bool intParamHasValueNames(uint32_t i) const override
    {
        const IntParam &p = intParams[i];
        return p.valueNames.size() == size_t{p.range.maximum} - p.range.minimum + 1;
    }
    void intParamValueNames(uint32_t i, std::vector<String> &out) const override { out = intParams[i].valueNames; }
    uint32_t intParamHighlight(uint32_t i) const override { return intParams[i].highlight; }
    void setIntParamHighlight(uint32_t i, uint32_t colour) override { setHighlight(intParams[i], colour); }
    void setIntParamHostIndex(uint32_t i, OptionalIndex index) override { intParams[i].hostIndex = index; }
    OptionalIndex intParamHostIndex(uint32_t i) const override { return intParams[i].hostIndex; }
    void setIntParamEditing(uint32_t i, bool on) override { intParams[i].editing = on; }
    bool intParamEditing(uint32_t i) const override { return intParams[i].editing; }

    uint32_t numExtraParams() const override { return count(extraParams); }
    uint32_t extraParamValue(uint32_t i) const override { return value(extraParams[i]); }
    void setExtraParamValue(uint32_t i, uint32_t v) override { setValue(extraParams[i], v); }
    const String &extraParamName(uint32_t i) const override { return extraParams[i].name; }
    const String &extraParamLabel(uint32_t i) const override { return extraParams[i].label; }
    IntRange extraParamRange(uint32_t i) const override { return extraParams[i].range; }
    uint32_t extraParamDefault(uint32_t i) const override { return extraParams[i].defaultValue; }
    ParamGroup extraParamGroup(uint32_t i) const override { return extraParams[i].group; }
    bool extraParamAutomatable(uint32_t i) const override { return extraParams[i].automatable; }
    uint32_t extraParamPersistence(uint32_t i) const override { return extraParams[i].persistence; }
    uint32_t extraParamScope(uint32_t i) const override { return extraParams[i].scope; }
    uint32_t extraParamHighlight(uint32_t i) const override { return extraParams[i].highlight; }
    void setExtraParamHighlight(uint32_t i, uint32_t colour) override { setHighlight(extraParams[i], colour); }
    void setExtraParamHostIndex(uint32_t i, OptionalIndex index) override { extraParams[i].hostIndex = index; }
    OptionalIndex extraParamHostIndex(uint32_t i) const override { return extraParams[i].hostIndex; }
    void setExtraParamEditing(uint32_t i, bool on) override { extraParams[i].editing = on; }
    bool extraParamEditing(uint32_t i) const override { return extraParams[i].editing; }
    // clang-format on

protected:
    using Component::Component;

    // Each adds a record to its list and returns it, for what else there is to say: that is as in Param until
    // it is said. References end with the next record.
    FloatParam &addFloat(ParamGroup group, const String &title, const char *unit, FloatRange range,
                         float initial, const Getters<T, float> &get, const Setters<T, float> &set)
    {
        floatParams.push_back({title, unit, range, initial, get, set, {}, group});
        return floatParams.back();
    }
    BoolParam &addBool(ParamGroup group, const String &title, bool initial, const Getters<T, bool> &get,
                       const Setters<T, bool> &set)
    {
        boolParams.push_back({title, "", {true, false}, initial, get, set, {}, group});
        return boolParams.back();
    }
    /// One of several names; its value is the place of the name.
    IntParam &addChoice(ParamGroup group, const String &title, uint32_t initial,
                        const std::vector<String> &names, const Getters<T, uint32_t> &get,
                        const Setters<T, uint32_t> &set)
    {
        const auto last = static_cast<uint32_t>(names.size() - 1);
        intParams.push_back({title, "", {0, last}, initial, get, set, {}, group});
        intParams.back().valueNames = names;
        return intParams.back();
    }

    T *owner = nullptr; // the object whose member functions the records name
    std::vector<FloatParam> floatParams;
    std::vector<BoolParam> boolParams;
    std::vector<IntParam> intParams;
    std::vector<IntParam> extraParams; // of the same shape as the ints; no component fills it

private:
    template <class P>
    static uint32_t count(const std::vector<P> &list)
    {
        return static_cast<uint32_t>(list.size());
    }
    template <class V>
    V value(const Param<T, V> &p) const
    {
        return p.getters(*owner, p.indices);
    }
    template <class V>
    void setValue(const Param<T, V> &p, V v)
    {
        p.setters(*owner, p.indices, v);
    }
    template <class P>
    static void setHighlight(P &p, uint32_t colour)
    {
        if (colour <= kNoHighlight) p.highlight = colour;
    }
};

} // namespace DSP
