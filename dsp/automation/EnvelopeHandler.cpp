#include "dsp/automation/EnvelopeHandler.h"

#include <algorithm>
#include <cmath>

#include "dsp/numerics/Math.h"

namespace DSP {

namespace {
constexpr int64_t kLatest = kUnitsPerSecond * 1000000000; // 30 years; its sample count fits at any rate

/// A segment with its times in samples.
class Stretch {
public:
    Stretch(const EnvelopeSegment &s, uint32_t rate)
        : segment(s),
          start(EnvelopeHandler::sampleAt(s.startTime, rate)),
          length(EnvelopeHandler::sampleAt(s.endTime, rate) - start)
    {
    }
    bool empty() const { return length <= 0; }

    float held(int64_t sample) const
    {
        return sample - start < length ? segment.startValue : segment.endValue;
    }
    /// startValue + x (a + (x - 1) b / 2): an arithmetic series of x increments with first term a, difference b.
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

/// Returns the segment that applies at `sample`: the last to start of those at least one sample long.
std::optional<Stretch> rulingAt(const Envelope &envelope, int64_t sample, uint32_t rate)
{
    const auto startsAfter = [rate](int64_t at, const EnvelopeSegment &s) {
        return at < EnvelopeHandler::sampleAt(s.startTime, rate);
    };
    auto next = std::upper_bound(envelope.begin(), envelope.end(), sample, startsAfter);
    while (next != envelope.begin())
        if (const Stretch stretch(*--next, rate); !stretch.empty()) return stretch;
    return {};
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

template <class V>
std::optional<V> EnvelopeHandler::valueAt(uint32_t index, int64_t sample, uint32_t rate) const
{
    constexpr ParamKind kind = kKindOf<V>;
    if (filled == 0) return {};
    const Util::Hold hold(lock);
    const std::optional<Stretch> ruling = rulingAt(envelopes(*this, kind)[index], sample, rate);
    if (!ruling) return {};
    if constexpr (kind == ParamKind::real) return ruling->curved(sample);
    if constexpr (kind == ParamKind::boolean) return ruling->held(sample) >= 0.5f;
    return static_cast<V>(Math::roundHalfAwayFromZero(ruling->held(sample)));
}
template std::optional<float> EnvelopeHandler::valueAt(uint32_t, int64_t, uint32_t) const;
template std::optional<bool> EnvelopeHandler::valueAt(uint32_t, int64_t, uint32_t) const;
template std::optional<uint32_t> EnvelopeHandler::valueAt(uint32_t, int64_t, uint32_t) const;

int64_t EnvelopeHandler::sampleAt(int64_t time, uint32_t rate)
{
    const int64_t shifted =
        std::clamp(time, -kLatest, kLatest) + kLatest; // not negative, so the remainder is not either
    const int64_t seconds = shifted / kUnitsPerSecond - kLatest / kUnitsPerSecond;
    return seconds * rate + (shifted % kUnitsPerSecond * rate + kUnitsPerSecond / 2) / kUnitsPerSecond;
}

} // namespace DSP
