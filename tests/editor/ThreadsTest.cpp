#include <algorithm>
#include <gtest/gtest.h>
#include <thread>

#include "tests/editor/HostedEffect.h"
#include "tests/editor/LockProbe.h"

namespace {

using LockProbe::Role;

/// The audio thread of a host that is far ahead: block after block, until told to stop.
class AudioThread {
public:
    explicit AudioThread(HostedEffect &hosted)
        : thread([this, &hosted] {
              LockProbe::setRole(Role::audio);
              const Audio sound = Signals::music(1, HostedEffect::kRate, 8 * HostedEffect::kBlock, -3);
              AEffect *const effect = hosted.effect.operator->();
              while (!stopping) {
                  const uint32_t from = static_cast<uint32_t>(costs.size() % 8) * HostedEffect::kBlock;
                  Audio block;
                  block.left.assign(sound.left.begin() + from,
                                    sound.left.begin() + from + HostedEffect::kBlock);
                  block.right.assign(sound.right.begin() + from,
                                     sound.right.begin() + from + HostedEffect::kBlock);
                  float *channels[] = {block.left.data(), block.right.data()};
                  const uint64_t begun = LockProbe::threadTimeNs();
                  effect->processReplacing(effect, channels, channels, HostedEffect::kBlock);
                  costs.push_back(LockProbe::threadTimeNs() - begun);
                  ++blocks;
              }
          })
    {
    }
    ~AudioThread() { stop(); }
    void stop()
    {
        stopping = true;
        if (thread.joinable()) thread.join();
    }
    /// Of one block, the usual one, in ns of processor time; after stop().
    uint64_t blockCost()
    {
        std::nth_element(costs.begin(), costs.begin() + static_cast<ptrdiff_t>(costs.size() / 2),
                         costs.end());
        return costs[costs.size() / 2];
    }
    std::atomic<uint32_t> blocks = 0;

private:
    std::vector<uint64_t> costs;
    std::atomic<bool> stopping = false;
    std::thread thread;
};

struct RoleOfWindow {
    RoleOfWindow() { LockProbe::setRole(Role::window); }
    ~RoleOfWindow() { LockProbe::setRole(Role::other); }
};

} // namespace

/// Whatever the editor does while it shows the sound, it holds no lock of the audio thread for longer than a
/// block of 512 frames takes to compute. Held times are processor time, so they bound what the audio thread
/// waits for on a processor of its own.
TEST(AudioThreadBesideTheEditor, NeverWaitsLongerThanABlockTakes)
{
    HostedEffect hosted;
    AudioThread audio(hosted);
    while (audio.blocks < 50) std::this_thread::yield();
    const RoleOfWindow role;
    LockProbe::take();
    for (int round = 0; round < 4; ++round) {
        for (int32_t x = 90; x < 460; x += 9) { // also where the crossover's lines are
            hosted.desk->drag({x, 80}, {x + 25, 80});
            hosted.desk->wait(33);
        }
        for (const UI::Native::WindowBase *const control : hosted.controls()) {
            hosted.desk->moveTo(HostedEffect::centre(*control));
            hosted.desk->wheel(round % 2 ? 120 : -120);
            hosted.desk->drag(HostedEffect::centre(*control), HostedEffect::centre(*control) + Point{3, 30});
            hosted.desk->wait(33);
        }
    }
    const LockProbe::Figures figures = LockProbe::take();
    audio.stop();
    const uint64_t cost = audio.blockCost();
    RecordProperty("audioEntries", std::to_string(figures.audioEntries));
    RecordProperty("audioContended", std::to_string(figures.audioContended));
    RecordProperty("windowEntries", std::to_string(figures.windowEntries));
    RecordProperty("longestHoldNs", std::to_string(figures.longestHold));
    RecordProperty("blockCostNs", std::to_string(cost));
    std::printf(
        "block %.1f us; audio took locks %llu times, %llu found one taken; the editor took locks %llu "
        "times, held one for at most %.1f us, an awaited one for %.1f us\n",
        static_cast<double>(cost) / 1e3, static_cast<unsigned long long>(figures.audioEntries),
        static_cast<unsigned long long>(figures.audioContended),
        static_cast<unsigned long long>(figures.windowEntries),
        static_cast<double>(figures.longestHold) / 1e3,
        static_cast<double>(figures.longestHoldAwaited) / 1e3);
    EXPECT_GT(figures.audioEntries, 1000u);
    EXPECT_GT(figures.windowEntries, 100u) << "the gestures have changed something";
    EXPECT_LE(figures.longestHold, cost);
}

/// A tick that only shows what there is takes no lock of the audio thread's at all.
TEST(AudioThreadBesideTheEditor, SharesNoLockWithATick)
{
    HostedEffect hosted;
    AudioThread audio(hosted);
    while (audio.blocks < 50) std::this_thread::yield();
    hosted.desk->wait(200);
    const RoleOfWindow role;
    LockProbe::take();
    for (int i = 0; i < 500; ++i) hosted.tick();
    EXPECT_EQ(LockProbe::take().windowEntries, 0u);
}

/// For ThreadSanitizer: everything at once. Without it the end is the test.
TEST(AudioThreadBesideTheEditor, SharesItsDataInOrder)
{
    HostedEffect hosted;
    AEffect *const effect = hosted.effect.operator->();
    void *chunk = nullptr;
    const intptr_t size = hosted.effect.dispatch(effGetChunk, 1, 0, &chunk);
    ASSERT_GT(size, 0);
    const std::vector<uint8_t> state(static_cast<uint8_t *>(chunk), static_cast<uint8_t *>(chunk) + size);
    AudioThread audio(hosted);
    std::atomic<bool> stopping = false;
    std::thread automation([&] { // some hosts set parameters from a thread of their own
        Signals::Random random(5);
        while (!stopping) {
            effect->setParameter(effect, static_cast<int32_t>(random.below(39)), random.real(0, 1));
            std::this_thread::yield();
        }
    });
    Signals::Random random(6);
    DSP::Global &settings = hosted.effect.global();
    for (int i = 0; i < 80; ++i) {
        hosted.desk->moveTo(
            {static_cast<int32_t>(random.below(547)), static_cast<int32_t>(random.below(488))});
        hosted.desk->press();
        hosted.desk->moveTo(
            {static_cast<int32_t>(random.below(547)), static_cast<int32_t>(random.below(488))});
        hosted.desk->release();
        hosted.desk->wait(33);
        if (i % 10 == 0) {
            std::vector<uint8_t> copy = state;
            hosted.effect.dispatch(effSetChunk, 1, size, copy.data());
        }
        if (i % 25 == 0) settings.setRenderingThread(!settings.getRenderingThread());
        if (i % 40 == 39) {
            hosted.close();
            EXPECT_TRUE(hosted.open());
        }
    }
    stopping = true;
    automation.join();
    audio.stop();
    EXPECT_GT(audio.blocks, 0u);
}
