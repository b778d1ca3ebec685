#pragma once
#include "tests/driver/Choices.h"
#include "tests/driver/DrivenEffect.h"

// The threads of a host that are not the window's. What an effect does at a time depends on other threads, so each
// call has a generator of its own: the caller's goes on the same whatever comes of it.

/// A piece of music, noise, what limiters fear, or silence.
Audio anySound(Random &random, uint32_t frames);
/// One block, of any length, in place or not, in buffers that end where it does.
void playBlock(DrivenEffect &effect, Random random);
/// Sets or reads a parameter, pauses or resumes, as a thread does that neither plays nor has windows.
void automate(DrivenEffect &effect, Random random);
