#pragma once
#include "tests/simulation/Choices.h"
#include "tests/simulation/EffectInstance.h"

/// Makes a random dispatcher call with random arguments. The pointer is null or a buffer of exactly the documented
/// size, so that the address sanitizer finds writes past its end.
void callAnything(EffectInstance &effect, Random &random);
