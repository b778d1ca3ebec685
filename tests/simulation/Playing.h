#pragma once
#include "tests/simulation/Choices.h"
#include "tests/simulation/EffectInstance.h"

// The host's audio and automation threads. Each call takes its own generator, because the number of random values
// it draws depends on the other threads; the caller's sequence stays reproducible.

/// Music, noise, silence or a signal that is hard to limit. Shape: stereo, `frames` long
Audio anySound(Random &random, uint32_t frames);
/// Plays one block of random length, in place or not. The buffers end with the block.
void playBlock(EffectInstance &effect, Random random);
/// Sets or reads a parameter, suspends or resumes.
void automate(EffectInstance &effect, Random random);
