#pragma once
#include "tests/driver/Choices.h"
#include "tests/driver/DrivenEffect.h"

/// Makes any call of the interface, with any numbers and with every pointer that a host may pass: null, or a buffer
/// of just the size that the interface or the effect's documentation gives the call. The address sanitizer finds
/// what is written past it.
void callAnything(DrivenEffect &effect, Random &random);
