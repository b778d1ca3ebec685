#pragma once
#include <vector>

#include "dsp/component/Component.h"

namespace DSP {

/// Implements the parameter operations for a component class T. T's constructor fills the parameter lists, sets
/// `owner` and calls finishConstruction; after that the lists keep their size.
template <class T>
class ComponentImpl : public Component {
public:
    using FloatParam = Param<T, float>;
    using BoolParam = Param<T, bool>;
    using IntParam = Param<T, uint32_t>;

    uint32_t numParams(ParamKind kind) const override
    {
        return withList(*this, kind, [](auto &list) { return static_cast<uint32_t>(list.size()); });
    }
    const ParamRecord &param(ParamKind kind, uint32_t i) const override
    {
        return withList(*this, kind, [i](auto &list) -> const ParamRecord & { return list[i]; });
    }
    ParamRecord &param(ParamKind kind, uint32_t i) override
    {
        return withList(*this, kind, [i](auto &list) -> ParamRecord & { return list[i]; });
    }
    ParameterValue paramValue(ParamKind kind, uint32_t i) const override
    {
        return withList(*this, kind,
                        [&](auto &list) { return ParameterValue(list[i].getters(*owner, list[i].indices)); });
    }
    bool setParamValue(ParamKind kind, uint32_t i, ParameterValue value) override
    {
        return withList(*this, kind, [&]<class V>(std::vector<Param<T, V>> &list) {
            return list[i].setters(*owner, list[i].indices, std::get<V>(value));
        });
    }

protected:
    using Component::Component;

    // These append a record with ParamRecord's defaults and return it so that the caller can set other fields.
    // The next append invalidates the reference.
    FloatParam &addFloat(ParamGroup group, const String &title, const char *unit, FloatRange range,
                         float initial, const Getters<T, float> &get, const Setters<T, float> &set)
    {
        return append(floatParams, {{title, unit, {range.minimum, range.maximum}, initial, group}, get, set});
    }
    BoolParam &addBool(ParamGroup group, const String &title, bool initial, const Getters<T, bool> &get,
                       const Setters<T, bool> &set)
    {
        return append(boolParams, {{title, "", {false, true}, initial, group}, get, set});
    }
    /// A choice from a list of names; its value is an index into `names`.
    IntParam &addChoice(ParamGroup group, const String &title, uint32_t initial,
                        const std::vector<String> &names, const Getters<T, uint32_t> &get,
                        const Setters<T, uint32_t> &set)
    {
        const auto last = static_cast<uint32_t>(names.size() - 1);
        IntParam &added = append(intParams, {{title, "", {0u, last}, initial, group}, get, set});
        added.valueNames = names;
        return added;
    }

    T *owner = nullptr; // the object on which getters and setters are called
    std::vector<FloatParam> floatParams;
    std::vector<BoolParam> boolParams;
    std::vector<IntParam> intParams;
    std::vector<IntParam> extraParams; // part of the saved format; empty in every component

private:
    template <class P>
    static P &append(std::vector<P> &list, P record)
    {
        return list.emplace_back(std::move(record));
    }
    template <class Self, class Work>
    static decltype(auto) withList(Self &self, ParamKind kind, Work work)
    {
        switch (kind) {
        case ParamKind::real: return work(self.floatParams);
        case ParamKind::boolean: return work(self.boolParams);
        case ParamKind::integer: return work(self.intParams);
        default: return work(self.extraParams);
        }
    }
};

} // namespace DSP
