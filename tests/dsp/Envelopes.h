#pragma once
#include <array>
#include <vector>

#include "dsp/automation/EnvelopeHandler.h"
#include "tests/reference/Envelope.h"
#include "tests/signals/Signals.h"

/// Random envelopes over the first kFrames samples.
namespace Envelopes {

inline constexpr uint32_t kFrames = 12000;

/// Start of a sample in units of 100 ns, rounded as by a host.
inline int64_t timeOf(int64_t sample, uint32_t rate) { return (sample * 10000000 + rate / 2) / rate; }

/// Draws segments sorted by start: separate, adjacent, overlapping, empty, shorter than a sample, starting before time 0
/// or ending after kFrames.
inline std::vector<Reference::Segment> drawSegments(Signals::Random &random, uint32_t rate, float low,
                                                    float high)
{
    std::vector<Reference::Segment> segments;
    auto start = static_cast<int64_t>(random.uniform(-0.2, 0.3) * kFrames);
    while (start < kFrames) {
        const int64_t length =
            random.pick(std::array<int64_t, 6>{0, 1, 2, 60, 1000, 1 + random.below(kFrames)});
        const int64_t from = timeOf(start, rate), shortOfASample = random.below(10000000 / rate / 3);
        segments.push_back({.start = from,
                            .end = length ? timeOf(start + length, rate) : from + shortOfASample,
                            .from = random.real(low, high),
                            .to = random.real(low, high),
                            .curve = random.pick(std::array{0u, 1u, 2u, 4u, 8u})});
        start += static_cast<int64_t>(random.pick(std::array{0.0, 0.5, 1.0, 1.0, 1.3}) * length);
        start += random.pick(std::array<int64_t, 3>{0, 1, 500});
    }
    return segments;
}

/// Converts segments for a switch: each holds its first value.
inline std::vector<Reference::Segment> hold(std::vector<Reference::Segment> segments)
{
    for (Reference::Segment &segment : segments) segment.curve = DSP::EnvelopeSegment::step;
    return segments;
}

inline DSP::Envelope toEnvelope(const std::vector<Reference::Segment> &segments)
{
    DSP::Envelope envelope;
    for (const Reference::Segment &s : segments)
        envelope.push_back({s.start, s.end, s.from, s.to, 0, s.curve});
    return envelope;
}

} // namespace Envelopes
