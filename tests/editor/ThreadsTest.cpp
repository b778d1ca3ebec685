#include <algorithm>
#include <thread>

#include "tests/editor/LockProbe.h"
#include "tests/editor/Session.h"

namespace {

using namespace Platform;
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
                  Audio block =
                      Signals::slice(sound, static_cast<uint32_t>(costs.size() % 8) * HostedEffect::kBlock,
                                     HostedEffect::kBlock);
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

/// Does anything to any control.
void act(Session &session, Signals::Random &random)
{
    Desk &desk = *session.desk;
    const ControlRow &row = random.pick(controlTable());
    const Point to = row.centre() + Point{static_cast<int32_t>(random.below(60)) - 30,
                                          static_cast<int32_t>(random.below(60)) - 30};
    static constexpr uint32_t kKeys[] = {kKeyTab, kKeyUp, kKeyDown, kKeyPageUp, kKeyEnd, kKeyHome, kKeyRight};
    switch (random.below(9)) {
    case 0: desk.drag(row.centre(), to); break;
    case 1:
        desk.moveTo(row.centre());
        desk.wheel(random.chance(0.5) ? 120 : -240);
        break;
    case 2:
        desk.answerPrompt("12.5", random.chance(0.7));
        desk.click(row.centre());
        break;
    case 3: desk.type(random.pick(kKeys)); break;
    case 4: {
        const Held keys(desk, {kKeyAlt});
        desk.click(row.centre());
        break;
    }
    case 5: {
        const Held keys(desk, {kKeyAlt, kKeyShift});
        desk.drag(row.centre(), to);
        break;
    }
    case 6: {
        const Point line{14 + static_cast<int32_t>(random.below(377)), 100};
        desk.drag(line, line + Point{20, 0});
        desk.moveTo(line);
        if (random.chance(0.3)) desk.doubleClick();
        break;
    }
    case 7:
        desk.moveTo(row.centre());
        desk.press();
        desk.moveTo(to);
        session.close(); // in the middle of it
        desk.release();
        session.open();
        break;
    default: desk.wait(33); break;
    }
}

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
    for (int round = 0; round < 2; ++round) {
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
    std::printf("a block takes %.1f us; the editor held a lock for at most %.1f us\n",
                static_cast<double>(cost) / 1e3, static_cast<double>(figures.longestHold) / 1e3);
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

/// Everything at once, with a host that automates from a thread of its own: for ThreadSanitizer, and for gestures that
/// are whole in spite of it.
TEST(AudioThreadBesideTheEditor, SharesItsDataInOrder)
{
    for (const bool echoes : {false, true}) {
        Session session;
        session.host.echoesAutomation = echoes;
        LoadedEffect::Bytes state = session.effect.chunk();
        {
            AudioThread audio(session);
            std::atomic<bool> stopping = false;
            std::thread automation([&] {
                Signals::Random random(7);
                while (!stopping)
                    session.effect.set(static_cast<int32_t>(random.below(39)), random.real(-0.1, 1.1));
            });
            Signals::Random random(echoes ? 11 : 5);
            for (int i = 0; i < 120; ++i) {
                act(session, random);
                if (i % 20 == 0) session.effect.load(state);
                if (i % 25 == 0) session.effect.global().setRenderingThread(i % 50 == 0);
            }
            stopping = true;
            automation.join();
            audio.stop();
            EXPECT_GT(audio.blocks, 0u);
        }
        session.desk->wait(0);
        const auto edits = session.takeEdits();
        EXPECT_GT(edits.size(), 100u);
        EXPECT_TRUE(Session::areWhole(edits));
        for (int32_t host = 0; host < 39; ++host) EXPECT_FALSE(session.editing(host)) << host;
        session.close();
        EXPECT_TRUE(session.takeEdits().empty());
    }
}
