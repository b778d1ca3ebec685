#include "tests/simulation/ChunkDamage.h"

#include <algorithm>
#include <cstring>

using Bytes = EffectInstance::Bytes;

template <class V>
static void put(Bytes &chunk, size_t offset, V value)
{
    if (offset + sizeof value <= chunk.size()) std::memcpy(chunk.data() + offset, &value, sizeof value);
}

ChunkDamage::ChunkDamage(const EffectInstance &effect) : valid(effect.chunk())
{
    for (const DSP::Component *component : effect.plugin().componentList()) {
        for (const DSP::ParamKind kind : DSP::kParamKinds)
            for (uint32_t i = 0; i < component->numParams(kind); ++i) {
                if (!component->param(kind, i).isSaved()) continue;
                (kind == DSP::ParamKind::real      ? words
                 : kind == DSP::ParamKind::boolean ? flags
                                                   : integers)
                    .push_back(name);
                name += kind == DSP::ParamKind::boolean ? 1 : 4; // bytes
            }
        words.push_back(name); // size of the component's own state
        name += 4;
    }
    words.push_back(name);
}

void ChunkDamage::change(Bytes &chunk, Random &random) const
{
    if (chunk.size() < name || random.chance(0.1)) chunk = valid;
    const auto size = static_cast<uint32_t>(chunk.size());
    switch (random.below(12)) {
    case 0: chunk[random.below(size)] ^= static_cast<uint8_t>(1u << random.below(8)); break;
    case 1: put(chunk, random.below(size), anyWord(random)); break;
    case 2: chunk.resize(random.below(size)); break;
    case 3: chunk.resize(size + random.below(300)); break;
    case 4: chunk.insert(chunk.end(), valid.begin(), valid.end()); break;
    case 5: rename(chunk, random); break;
    case 6: put(chunk, random.pick(flags), static_cast<uint8_t>(random.next())); break;
    case 7: put(chunk, random.pick(words), anyWord(random)); break;
    case 8: put(chunk, random.pick(words), random.real(-100, 20000)); break;
    case 9: // rarely: both are slow, as they rebuild spectra or copy many bytes
        if (random.chance(0.2)) put(chunk, random.pick(integers), anyWord(random));
        if (random.chance(0.02)) chunk.resize(std::max(size, kLongest), 'x');
        break;
    default: put(chunk, random.pick(words), anyReal(random));
    }
    if (random.chance(0.6)) std::copy_n(valid.begin(), std::min(kHeader, chunk.size()), chunk.begin());
}

void ChunkDamage::rename(Bytes &chunk, Random &random) const
{
    const uint32_t length = random.below(random.chance(0.5) ? 40 : 400);
    put(chunk, name, length);
    chunk.resize(name + sizeof length);
    for (uint32_t i = 0; i < length; ++i) chunk.push_back(static_cast<uint8_t>(random.next()));
}
