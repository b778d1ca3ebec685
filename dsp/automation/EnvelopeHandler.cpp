#include "dsp/automation/EnvelopeHandler.h"

#include <algorithm>
#include <cmath>

#include "dsp/numerics/Math.h"

namespace DSP {

namespace {
constexpr int64_t kUnitsPerSecond = 10000000;
constexpr int64_t kLatest = kUnitsPerSecond * 1000000000; // 30 years; counts its samples at any rate

// Hosts round the time of a block to 100 ns, so the sample is the nearest.
int64_t sampleAt(int64_t time, uint32_t rate)
{
    const int64_t shifted = std::clamp(time, -kLatest, kLatest) + kLatest; // for a remainder that is positive
    const int64_t seconds = shifted / kUnitsPerSecond - kLatest / kUnitsPerSecond;
    return seconds * rate + (shifted % kUnitsPerSecond * rate + kUnitsPerSecond / 2) / kUnitsPerSecond;
}

/// A segment in samples.
class Stretch {
public:
    Stretch(const EnvelopeSegment &s, uint32_t rate)
        : segment(s), start(sampleAt(s.startTime, rate)), length(sampleAt(s.endTime, rate) - start)
    {
    }
    bool empty() const { return length <= 0; }
    bool hasEnded(int64_t sample) const { return sample - start > length; }

    float held(int64_t sample) const
    {
        return sample - start < length ? segment.startValue : segment.endValue;
    }
    /// start + x (a + (x - 1) b / 2): the sum of x increments that grow from `a` by `b`.
    float curved(int64_t sample) const
    {
        if (sample - start >= length || segment.curve == EnvelopeSegment::step) return held(sample);
        const double rise = static_cast<double>(segment.endValue) - segment.startValue;
        const auto n = static_cast<double>(length), x = static_cast<double>(sample - start);
        double a = rise / n, b = 0;
        const double growth = length > 1 ? 2 * rise / (n * (n - 1)) : 0;
        if (segment.curve == EnvelopeSegment::accelerating) {
            a = 0;
            b = growth;
        } else if (segment.curve == EnvelopeSegment::decelerating) {
            a = (n - 1) * growth;
            b = -growth;
        }
        return static_cast<float>(segment.startValue + x * (a + (x - 1) * b / 2));
    }

private:
    const EnvelopeSegment &segment;
    int64_t start, length;
};

/// Writes `read(stretch, sample)` of the stretch that rules at each step of the grid.
template <class Values, class V, class Read>
bool evaluate(const Envelope &envelope, const EnvelopeGrid &grid, V initial, Values &values, Read read)
{
    values.resize(grid.steps());
    const int64_t first = sampleAt(grid.startTime, grid.sampleRate);
    const auto startsAfter = [&grid](int64_t sample, const EnvelopeSegment &s) {
        return sample < sampleAt(s.startTime, grid.sampleRate);
    };
    auto next = std::upper_bound(envelope.begin(), envelope.end(), first, startsAfter);
    auto ruling = envelope.end();
    for (auto before = next; before != envelope.begin() && ruling == envelope.end();)
        if (!Stretch(*--before, grid.sampleRate).empty()) ruling = before;

    bool underWay = ruling != envelope.end() && !Stretch(*ruling, grid.sampleRate).hasEnded(first);
    const auto advance = [&](int64_t sample) {
        for (; next != envelope.end() && !startsAfter(sample, *next); ++next)
            if (!Stretch(*next, grid.sampleRate).empty()) {
                ruling = next;
                underWay = true;
            }
    };
    for (uint32_t k = 0; k < values.size(); ++k) {
        const int64_t sample = first + int64_t{k} * grid.step;
        advance(sample);
        values[k] = ruling == envelope.end()
                        ? initial
                        : static_cast<V>(read(Stretch(*ruling, grid.sampleRate), sample));
    }
    advance(first + grid.frames);
    return underWay;
}

void limitSlew(float previous, std::vector<float> &values, SlewLimit slew)
{
    if (!(slew.limit > 0)) return;
    if (slew.raw) slew.raw->assign(values.begin(), values.end());
    for (float &value : values)
        previous = value = std::clamp(value, previous - slew.limit, previous + slew.limit);
}
} // namespace

EnvelopeHandler::EnvelopeHandler(const String &componentName, uint32_t floats, uint32_t bools, uint32_t ints)
    : lock(String("%1::EnvelopeHandler").arg(componentName)),
      floatEnvelopes(floats),
      boolEnvelopes(bools),
      intEnvelopes(ints)
{
}

template <class Handler>
auto &EnvelopeHandler::envelopes(Handler &handler, ParamKind kind)
{
    switch (kind) {
    case ParamKind::real: return handler.floatEnvelopes;
    case ParamKind::boolean: return handler.boolEnvelopes;
    default: return handler.intEnvelopes;
    }
}

void EnvelopeHandler::setEnvelope(ParamKind kind, uint32_t index, Envelope segments)
{
    std::erase_if(segments, [](const EnvelopeSegment &s) {
        return s.endTime <= s.startTime || !std::isfinite(s.startValue) || !std::isfinite(s.endValue);
    });
    std::stable_sort(segments.begin(), segments.end(),
                     [](const auto &a, const auto &b) { return a.startTime < b.startTime; });
    const Util::Hold hold(lock);
    Envelope &present = envelopes(*this, kind)[index];
    filled = filled + !segments.empty() - !present.empty();
    present.swap(segments);
}

bool EnvelopeHandler::hasEnvelope(ParamKind kind, uint32_t index) const
{
    if (filled == 0) return false;
    const Util::Hold hold(lock);
    return !envelopes(*this, kind)[index].empty();
}

bool EnvelopeHandler::evaluateFloats(uint32_t index, const EnvelopeGrid &grid, float initial,
                                     std::vector<float> &values, SlewLimit slew) const
{
    const Util::Hold hold(lock);
    const bool underWay = evaluate(floatEnvelopes[index], grid, initial, values,
                                   [](const Stretch &s, int64_t sample) { return s.curved(sample); });
    limitSlew(initial, values, slew);
    return underWay;
}

bool EnvelopeHandler::evaluateBools(uint32_t index, const EnvelopeGrid &grid, bool initial,
                                    std::vector<bool> &values) const
{
    const Util::Hold hold(lock);
    return evaluate(boolEnvelopes[index], grid, initial, values,
                    [](const Stretch &s, int64_t sample) { return s.held(sample) >= 0.5f; });
}

bool EnvelopeHandler::evaluateInts(uint32_t index, const EnvelopeGrid &grid, uint32_t initial,
                                   std::vector<uint32_t> &values) const
{
    const Util::Hold hold(lock);
    return evaluate(intEnvelopes[index], grid, initial, values, [](const Stretch &s, int64_t sample) {
        return Math::roundHalfAwayFromZero(s.held(sample));
    });
}

} // namespace DSP
