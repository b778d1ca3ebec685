#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "host/AudioEffectX.h"

namespace {

constexpr int32_t kDeclaredSpeakers = std::extent_v<decltype(VstSpeakerArrangement::speakers)>;
constexpr int32_t kMostSpeakers = 4096; // more is a host's mistake, not a room

/// Bytes of a record with `channels` speakers; there is room for the declared ones at least.
size_t bytesFor(int32_t channels)
{
    return offsetof(VstSpeakerArrangement, speakers) +
           sizeof(VstSpeakerProperties) * static_cast<size_t>(std::max(channels, kDeclaredSpeakers));
}

} // namespace

bool AudioEffectX::allocateArrangement(VstSpeakerArrangement **arrangement, int32_t channels)
{
    if (!arrangement || channels < 0 || channels > kMostSpeakers) return false;
    deallocateArrangement(arrangement);
    *arrangement = static_cast<VstSpeakerArrangement *>(std::calloc(1, bytesFor(channels)));
    if (!*arrangement) return false;
    (*arrangement)->numChannels = channels;
    return true;
}

bool AudioEffectX::deallocateArrangement(VstSpeakerArrangement **arrangement)
{
    if (!arrangement) return false;
    std::free(*arrangement);
    *arrangement = nullptr;
    return true;
}

bool AudioEffectX::copySpeaker(VstSpeakerProperties *to, const VstSpeakerProperties *from)
{
    if (!to || !from) return false;
    *to = *from;
    return true;
}

bool AudioEffectX::matchArrangement(VstSpeakerArrangement **to, const VstSpeakerArrangement *from)
{
    if (to && *to == from) return from != nullptr;
    if (!from || !allocateArrangement(to, from->numChannels)) return false;
    std::memcpy(*to, from,
                offsetof(VstSpeakerArrangement, speakers) +
                    sizeof(VstSpeakerProperties) * static_cast<size_t>(from->numChannels));
    return true;
}
