#pragma once
#include "dsp/component/Block.h"

namespace DSP {

class Component;

/// Processes a block in steps. At the start of each it sets the automatable parameters that have an envelope,
/// except those that the user is editing. Returns true if a value changed.
/// Thread  audio, under both locks of the component; no allocation
bool runAutomated(Component &component, const Now &now, const Block &block);

} // namespace DSP
