#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "host/AudioEffectX.h"

namespace {

constexpr int32_t kDeclaredSpeakers = std::extent_v<decltype(SpeakerLayout::speakers)>;
constexpr int32_t kMostSpeakers = 4096; // a larger count is a host error

/// Size of a record for `channels` speakers in bytes. A record has at least the declared number of speakers.
size_t bytesFor(int32_t channels)
{
    return offsetof(SpeakerLayout, speakers) +
           sizeof(Speaker) * static_cast<size_t>(std::max(channels, kDeclaredSpeakers));
}

} // namespace

bool AudioEffectX::allocateArrangement(SpeakerLayout **arrangement, int32_t channels)
{
    if (!arrangement || channels < 0 || channels > kMostSpeakers) return false;
    deallocateArrangement(arrangement);
    *arrangement = static_cast<SpeakerLayout *>(std::calloc(1, bytesFor(channels)));
    if (!*arrangement) return false;
    (*arrangement)->channelCount = channels;
    return true;
}

bool AudioEffectX::deallocateArrangement(SpeakerLayout **arrangement)
{
    if (!arrangement) return false;
    std::free(*arrangement);
    *arrangement = nullptr;
    return true;
}

bool AudioEffectX::copySpeaker(Speaker *to, const Speaker *from)
{
    if (!to || !from) return false;
    *to = *from;
    return true;
}

bool AudioEffectX::matchArrangement(SpeakerLayout **to, const SpeakerLayout *from)
{
    if (to && *to == from) return from != nullptr;
    if (!from || !allocateArrangement(to, from->channelCount)) return false;
    std::memcpy(*to, from,
                offsetof(SpeakerLayout, speakers) +
                    sizeof(Speaker) * static_cast<size_t>(from->channelCount));
    return true;
}
