#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "tests/fuzz/ChunkInput.h"
#include "tests/fuzz/ChunkLayout.h"
#include "tests/fuzz/FuzzedEffect.h"
#include "tests/signals/Signals.h"

// Makes new inputs out of old ones by the fields of a chunk: of bytes changed at random nearly all would fail at the
// header, and nothing behind it would be tried.

extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);

namespace {

using Limits = std::numeric_limits<float>;
constexpr float kReals[] = {0.0f,
                            -0.0f,
                            1.0f,
                            -1.0f,
                            20.0f,
                            -60.0f,
                            1e5f,
                            -1e5f,
                            2147483648.0f,
                            4294967296.0f,
                            Limits::max(),
                            -Limits::max(),
                            Limits::min(),
                            Limits::denorm_min(),
                            1e30f,
                            -1e30f,
                            1e-30f,
                            Limits::infinity(),
                            -Limits::infinity(),
                            Limits::quiet_NaN()};
constexpr uint32_t kWords[] = {0,          1,          2,          6,         242,    243,
                               244,        254,        200000,     200001,    400008, 0x0001B38A,
                               0x7FFFFFFF, 0x80000000, 0xFFFFFFF0, 0xFFFFFFFF};

class Mutation {
public:
    Mutation(Bytes &changed, size_t most, unsigned seed) : chunk(changed), mostBytes(most), random(seed) {}

    uint8_t anyHow()
    {
        uint8_t how = random.chance(0.5) ? asPreset : 0;
        if (random.chance(1.0 / 64)) how |= withNegativeSize;
        if (random.chance(1.0 / 256)) how |= withLongTail;
        if (random.chance(1.0 / 128)) how |= thenListen;
        return how;
    }

    void change()
    {
        if (chunk.empty() || random.chance(0.1)) chunk = sound();
        static constexpr void (Mutation::*kChanges[])() = {
            &Mutation::changeBytes,   &Mutation::changeReal, &Mutation::changeReal,
            &Mutation::changeInteger, &Mutation::changeSize, &Mutation::changeFlag,
            &Mutation::cut,           &Mutation::lengthen,   &Mutation::rename,
        };
        for (uint32_t count = 1 + random.below(4); count > 0; --count) (this->*random.pick(kChanges))();
        if (random.chance(0.6)) repairHeader();
        if (!random.chance(1.0 / 32)) repairIntegers();
        if (chunk.size() > mostBytes) chunk.resize(mostBytes);
    }

private:
    const Bytes &sound() const { return FuzzedEffect::instance().startChunk(); }
    static const ChunkLayout &layout()
    {
        static const ChunkLayout only(FuzzedEffect::instance().loaded().plugin());
        return only;
    }

    template <class V>
    void put(size_t place, V value)
    {
        if (place + sizeof value <= chunk.size()) std::memcpy(chunk.data() + place, &value, sizeof value);
    }

    void changeBytes()
    {
        const size_t size = chunk.size();
        chunk.resize(std::max(size, mostBytes));
        chunk.resize(LLVMFuzzerMutate(chunk.data(), size, chunk.size()));
    }
    void changeReal()
    {
        switch (random.below(3)) {
        case 0: return put(random.pick(layout().reals), random.pick(kReals));
        case 1: return put(random.pick(layout().reals), random.real(-100, 20000));
        default: return put(random.pick(layout().reals), static_cast<uint32_t>(random.next()));
        }
    }
    void changeSize() { put(random.pick(layout().sizes), anyWord()); }
    void changeInteger() { put(random.pick(layout().integers), anyWord()); }
    uint32_t anyWord()
    {
        return random.chance(0.7) ? random.pick(kWords) : static_cast<uint32_t>(random.next());
    }
    void changeFlag() { put(random.pick(layout().flags), static_cast<uint8_t>(random.next())); }
    void cut() { chunk.resize(random.below(static_cast<uint32_t>(chunk.size()) + 1)); }
    void lengthen()
    {
        if (random.chance(0.3)) return chunk.resize(chunk.size() + random.below(300));
        chunk.insert(chunk.end(), sound().begin(), sound().end());
    }
    void rename()
    {
        if (chunk.size() < layout().name + sizeof(uint32_t)) return;
        const uint32_t length = random.below(random.chance(0.5) ? 40 : 400);
        put(layout().name, length);
        chunk.resize(layout().name + sizeof length);
        for (uint32_t i = 0; i < length; ++i) chunk.push_back(static_cast<uint8_t>(random.next()));
    }
    void repairHeader()
    {
        if (chunk.size() < layout().name) chunk = sound();
        std::copy_n(sound().begin(), ChunkLayout::kHeader, chunk.begin());
    }
    /// Each of them sets up spectra anew, which takes longer than all the rest.
    void repairIntegers()
    {
        for (const size_t place : layout().integers)
            if (place + 4 <= chunk.size())
                std::copy_n(sound().begin() + static_cast<ptrdiff_t>(place), 4,
                            chunk.begin() + static_cast<ptrdiff_t>(place));
    }

    Bytes &chunk;
    const size_t mostBytes;
    Signals::Random random;
};

} // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned seed)
{
    Bytes chunk(data + std::min<size_t>(size, 1), data + size);
    Mutation mutation(chunk, maxSize - 1, seed);
    data[0] = mutation.anyHow();
    mutation.change();
    std::ranges::copy(chunk, data + 1);
    return 1 + chunk.size();
}
