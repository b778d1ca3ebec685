#pragma once
#include <algorithm>

#include "dsp/component/Component.h"
#include "ui/window/CanvasWindow.h"
#include "ui/window/FrameBase.h"

namespace UI::Native {

/// Base class of PixmapSlider and TextEdit: gestures change a float parameter by a delta, set it or reset it. If an
/// `apply` flag is false, the control only reports the gesture; the receiver applies it and calls refresh(). The
/// signals and the slot belong to `Self`'s reflection record.
template <class Self>
class ValueControl : public Reflected<Self, CanvasWindow> {
public:
    struct Apply {
        bool delta, reset, set;
    };
    static constexpr Apply kAll = {true, true, true}, kNone = {false, false, false};

    ValueControl(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                 DSP::Component *parameterOwner, uint32_t parameter, Apply apply)
        : Reflected<Self, CanvasWindow>(ownerFrame, parentWindow, windowName),
          component(parameterOwner),
          paramIndex(parameter),
          applyDelta(apply.delta),
          applyReset(apply.reset),
          applySet(apply.set),
          minValue(parameterOwner->floatParamRange(parameter).minimum),
          maxValue(parameterOwner->floatParamRange(parameter).maximum),
          displayMin(minValue),
          displayMax(maxValue),
          value(parameterOwner->floatParamValue(parameter))
    {
    }

    void sigUserValueDelta(float delta)
    {
        this->template emitSignal<&ValueControl::sigUserValueDelta>(delta);
    }
    void sigUserValueSet(float wanted) { this->template emitSignal<&ValueControl::sigUserValueSet>(wanted); }
    void sigUserReset() { this->template emitSignal<&ValueControl::sigUserReset>(); }
    void sigUserValueChanged() { this->template emitSignal<&ValueControl::sigUserValueChanged>(); }
    void slotUpdateFloatParamValue() { static_cast<Self *>(this)->refresh(); }

    using Signals = MetaRows<Meta<&ValueControl::sigUserValueDelta, "fDelta">,
                             Meta<&ValueControl::sigUserValueSet, "fValue">,
                             Meta<&ValueControl::sigUserReset>, Meta<&ValueControl::sigUserValueChanged>>;
    using Slots = MetaRows<Meta<&ValueControl::slotUpdateFloatParamValue>>;

protected:
    void changeBy(float delta)
    {
        if (applyDelta) write(clampToDisplay(clampToDisplay(value) + delta));
        sigUserValueDelta(delta);
        sigUserValueChanged();
        if (applyDelta) showAndTell();
    }
    void changeTo(float wanted)
    {
        if (applySet) {
            wanted = std::clamp(wanted, minValue, maxValue);
            write(wanted);
        }
        sigUserValueSet(wanted);
        sigUserValueChanged();
        if (applySet) showAndTell();
    }
    void reset()
    {
        if (applyReset) write(component->floatParamDefault(paramIndex));
        sigUserReset();
        sigUserValueChanged();
        if (applyReset) showAndTell();
    }
    /// Reports the begin, a change or the end of a gesture to the plug-in and its host.
    void tellPlugin(Plugin::EditPhase phase)
    {
        this->frame->getPlugin()->editParameter({component, DSP::ParamKind::real, paramIndex}, phase, value);
    }
    static constexpr float kCoarse = 10.0f, kFine = 0.1f;
    // A wheel notch of 120 is 1 unit.
    static constexpr float kUnitsPerWheelTick = 0.008333334f;
    /// Handles the keys that step a value: arrows by 1, page keys by `page`, End and Home by `whole`.
    bool stepByKey(uint32_t key, uint32_t mods, float page, float whole)
    {
        float step = 0.0f;
        switch (key) {
        case Platform::kKeyPageUp: step = page; break;
        case Platform::kKeyPageDown: step = -page; break;
        case Platform::kKeyEnd: step = whole; break;
        case Platform::kKeyHome: step = -whole; break;
        case Platform::kKeyLeft:
        case Platform::kKeyDown: step = -1.0f; break;
        case Platform::kKeyUp:
        case Platform::kKeyRight: step = 1.0f; break;
        default: return false;
        }
        changeBy(scaledStep(step, mods, kCoarse, kFine));
        this->sigResetFocusTimer();
        return true;
    }
    /// Multiplies a step by `coarse` for Shift and by `fine` for Ctrl. With Alt, Shift links the bands instead.
    float scaledStep(float step, uint32_t mods, float coarse, float fine) const
    {
        if ((mods & Platform::kShift) && !this->frame->altDown()) step *= coarse;
        if (mods & Platform::kControl) step *= fine;
        return step;
    }
    float clampToDisplay(float v) const { return std::clamp(v, displayMin, displayMax); }

    DSP::Component *const component;
    const uint32_t paramIndex;
    const bool applyDelta, applyReset, applySet;
    const float minValue, maxValue; // the parameter's range
    float displayMin, displayMax;   // range of the displayed number
    float value;

private:
    void write(float wanted)
    {
        value = wanted;
        component->setFloatParamValue(paramIndex, value);
    }
    void showAndTell()
    {
        this->redraw();
        tellPlugin(Plugin::EditPhase::value);
    }
};

} // namespace UI::Native
