#include "tests/soak/AutomationThread.h"

#include <cmath>
#include <limits>

#include "tests/soak/Journal.h"

using Journal::counts;

void AutomationThread::step()
{
    SoakedEffect &effect = studio.effect(random.below(studio.size()));
    const auto index = static_cast<int32_t>(random.below(41)) - 1; // 39 of them are parameters
    const uint32_t what = random.below(64);
    const float value =
        random.chance(0.02) ? std::numeric_limits<float>::quiet_NaN() : random.real(-0.1, 1.1);

    const std::scoped_lock automating(effect.automating);
    AEffect *const record = effect.record();
    if (!record) return;
    char text[256] = {};
    switch (what) {
    case 0:
    case 1:
        effect.dispatch(effMainsChanged, 0, what);
        ++counts.pauses;
        return;
    case 2: effect.dispatch(effEditIdle); return; // of some hosts, not on the window thread
    case 3: effect.dispatch(effGetParamDisplay, index, 0, text); return;
    case 4: effect.dispatch(effGetParamName, index, 0, text); return;
    case 5:
        Journal::require(std::isfinite(record->getParameter(record, index)), "parameters are finite",
                         effect.number);
        return;
    default: record->setParameter(record, index, value); ++counts.valuesSet;
    }
}
