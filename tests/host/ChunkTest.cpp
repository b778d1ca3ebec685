#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "host/VSTPlugin.h"
#include "tests/host/FakeHost.h"
#include "tests/signals/Compare.h"

namespace {

using Bytes = LoadedEffect::Bytes;
using namespace std::string_literals;

/// Builds a chunk byte by byte, independently of the product code.
class Layout {
public:
    Layout &word(uint32_t value)
    {
        for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<uint8_t>(value >> 8 * i));
        return *this;
    }
    Layout &real(float value, int times = 1)
    {
        while (times-- > 0) word(std::bit_cast<uint32_t>(value));
        return *this;
    }
    Layout &flag(int times = 1)
    {
        bytes.insert(bytes.end(), static_cast<size_t>(times), 0);
        return *this;
    }
    Bytes bytes;
};

Bytes defaultChunk()
{
    Layout l;
    l.word(243);                                                  // size of the image that follows, in bytes
    l.word(0x0001B38A).word(6).word(243);                         // magic, version, size of the image
    l.word(0).word(0).word(0);                                    // global, derived, level meter: no state
    l.real(0).word(0);                                            // output gain
    l.real(120).real(2000).real(10000).flag(8).word(0);           // crossover
    l.real(0).real(0).real(20).real(4).real(500).flag(2).word(0); // limiter
    l.real(0, 8).real(1, 4).real(10, 4).real(100, 4).flag(9).word(0);              // compressors
    for (int band = 0; band < 4; ++band) l.flag().word(3).word(5).word(4).word(0); // spectra
    for (const char letter : "\7\0\0\0Default"s) l.bytes.push_back(static_cast<uint8_t>(letter));
    return l.bytes;
}

void moveEverything(const LoadedEffect &effect, uint64_t seed)
{
    Signals::Random random(seed);
    effect.setAll(random);
    DSP::Meter::Spectrum &spectrum = *effect.plugin().transformHandle().spectrum(2);
    spectrum.setOnInput(!spectrum.getOnInput());
    spectrum.setOverlap(random.below(6));
    effect.plugin().transformHandle().maximizer()->setRatio(random.real(1, 2));
}

TEST(Chunk, DefaultMatchesTheDocumentedFormat)
{
    FakeHost host;
    const LoadedEffect effect;
    EXPECT_EQ(defaultChunk(), effect.chunk());
}

TEST(Chunk, StoresTheFullProgramName)
{
    FakeHost host;
    const LoadedEffect from, to;
    char name[] = "A name of more than twenty-three characters";
    from.dispatch(effSetProgramName, 0, 0, name);
    EXPECT_NE(0, to.load(from.chunk()));
    EXPECT_EQ(std::string(name).substr(0, 23), to.text(effGetProgramName));
    EXPECT_EQ(std::string(name), to.text(effGetProgramNameIndexed));
    EXPECT_EQ(defaultChunk().size() - 7 + std::strlen(name), to.chunk().size());
    EXPECT_EQ(1, to.dispatch(effCopyProgram, 0));
    for (const int32_t none : {-1, 1}) { // only program 0 exists
        EXPECT_EQ(0, to.dispatch(effCopyProgram, none));
        EXPECT_EQ(0, to.dispatch(effGetProgramNameIndexed, none, 0, name));
    }
}

// Hosts may load the state before they set the rate, before they play, or during playback.
TEST(Chunk, RestoresStateAndSoundWheneverLoaded)
{
    FakeHost host;
    const Audio music = Signals::music(1, 96000, 20000, 0);
    const LoadedEffect source;
    for (unsigned seed = 0; seed < 5; ++seed) {
        moveEverything(source, seed);
        const Bytes chunk = source.chunk();
        Audio expected;
        const auto checkAudio = [&](const LoadedEffect &effect) {
            const Audio actual = effect.process(music);
            if (expected.left.empty()) expected = actual;
            EXPECT_EQ(expected, actual);
        };
        for (const std::string order : {"rate state on", "state rate on", "state on rate", "on rate state",
                                        "on play state rate", "on play rate play state"}) {
            SCOPED_TRACE(order);
            const LoadedEffect effect;
            effect.global().setOpacity(55); // not saved
            std::istringstream steps(order);
            for (std::string step; steps >> step;) {
                if (step == "rate") effect.setRate(96000);
                if (step == "state") {
                    EXPECT_EQ(static_cast<intptr_t>(chunk.size()), effect.load(chunk));
                }
                if (step == "on") effect.switchOn();
                if (step == "play") effect.process(music);
            }
            EXPECT_EQ(chunk, effect.chunk());
            EXPECT_EQ(55, effect.global().getOpacity());
            if (order.ends_with("on")) checkAudio(effect);
            effect.switchOff();
            effect.switchOn();
            checkAudio(effect);
        }
    }
}

TEST(Chunk, RefusingDamageChangesNothing)
{
    FakeHost host;
    const LoadedEffect effect;
    moveEverything(effect, 1);
    const Bytes before = effect.chunk(), valid = defaultChunk();
    const auto expectRefused = [&](const Bytes &chunk, const char *what, bool answersSize = true) {
        EXPECT_EQ(answersSize ? static_cast<intptr_t>(chunk.size()) : 0, effect.load(chunk)) << what;
        EXPECT_FALSE(effect.plugin().lastChunkLoaded()) << what;
        EXPECT_EQ(before, effect.chunk()) << what;
    };
    for (size_t length = 0; length < valid.size(); ++length)
        expectRefused(Bytes(valid.begin(), valid.begin() + static_cast<ptrdiff_t>(length)), "truncated");
    const auto with = [&](size_t offset, uint32_t word) {
        Bytes chunk = valid;
        for (size_t i = 0; i < 4; ++i) chunk[offset + i] = static_cast<uint8_t>(word >> 8 * i);
        return chunk;
    };
    expectRefused(with(0, 200001), "state too long", false);
    expectRefused(with(0, 0xFFFFFFFF), "negative length of the state", false);
    expectRefused(with(0, 242), "wrong length of the state");
    expectRefused(with(4, 1), "magic");
    expectRefused(with(8, 5), "version");
    expectRefused(with(12, 242), "length in the image");
    expectRefused(with(4 + 12 + 12, 0x7FC00000), "NaN gain");
    expectRefused(with(4 + 12 + 12, 0xFF800000), "infinite gain");
    expectRefused(with(4 + 243, 0xFFFFFFF0), "negative length of the name");
    expectRefused(with(4 + 243, 8), "truncated name");
    EXPECT_EQ(0, effect.dispatch(effSetChunk, 0, -5, const_cast<uint8_t *>(valid.data())));
    EXPECT_EQ(0, effect.dispatch(effSetChunk, 0, 257, nullptr));
    EXPECT_EQ(0, effect.dispatch(effGetChunk, 0, 0, nullptr));

    EXPECT_NE(0, effect.load(with(4 + 243, 200001))) << "an overlong name reads as empty";
    EXPECT_EQ("", effect.text(effGetProgramName));
}

} // namespace
