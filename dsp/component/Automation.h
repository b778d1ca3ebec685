#pragma once
#include "dsp/component/Block.h"

namespace DSP {

class Component;

/// Processes a block as the component's envelopes say: cuts it into steps and sets at the start of each the
/// automatable parameters that have an envelope and that the user does not hold. True if a value moved.
/// Thread  audio, under both locks of the component; no allocation
bool runAutomated(Component &component, const Now &now, const Block &block);

} // namespace DSP
