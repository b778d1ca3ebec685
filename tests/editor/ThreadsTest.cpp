#include <thread>

#include "tests/editor/Session.h"

// A person, a host that automates and the audio thread at once.

namespace {

using namespace Platform;

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

template <class Work>
std::jthread repeating(Work work)
{
    return std::jthread([work](const std::stop_token &stop) mutable {
        while (!stop.stop_requested()) work();
    });
}

/// For ThreadSanitizer, and for gestures that are whole in spite of it.
TEST(AudioThreadBesideTheEditor, SharesItsDataInOrder)
{
    for (const bool echoes : {false, true}) {
        Session session;
        session.host.echoesAutomation = echoes;
        const LoadedEffect::Bytes state = session.effect.chunk();
        {
            const Audio sound = Signals::music(1, HostedEffect::kRate, 8 * HostedEffect::kBlock, -3);
            const std::jthread audio = repeating([&] { session.play(sound); });
            const std::jthread automation = repeating([&session, random = Signals::Random(7)]() mutable {
                session.effect.set(static_cast<int32_t>(random.below(39)), random.real(-0.1, 1.1));
            });
            Signals::Random random(echoes ? 11 : 5);
            for (int i = 0; i < 120; ++i) {
                act(session, random);
                if (i % 20 == 0) session.effect.load(state);
                if (i % 25 == 0) session.effect.global().setRenderingThread(i % 50 == 0);
            }
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

} // namespace
