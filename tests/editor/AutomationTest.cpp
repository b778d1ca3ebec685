#include <atomic>
#include <thread>

#include "tests/editor/Session.h"

// A host automates everything while a person works the editor.

namespace {

using namespace Platform;

/// Sets all parameters at full speed, for as long as the object lives.
class Automation {
public:
    explicit Automation(const LoadedEffect &effect)
        : worker([this, &effect] {
              Signals::Random random(7);
              while (!done.load(std::memory_order_relaxed))
                  effect.set(static_cast<int32_t>(random.below(39)), random.real(-0.1, 1.1));
          })
    {
    }
    ~Automation()
    {
        done = true;
        worker.join();
    }
    Automation(const Automation &) = delete;

private:
    std::atomic<bool> done = false;
    std::thread worker;
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
    default: desk.wait(random.below(4)); break;
    }
}

/// Each parameter's begins and ends in turn, values only between them, and nothing left open.
void expectWholeGestures(const std::vector<FakeHost::Call> &edits)
{
    bool open[39] = {};
    for (const FakeHost::Call &call : edits) {
        ASSERT_TRUE(call.index >= 0 && call.index < 39);
        bool &state = open[call.index];
        if (call.opcode == audioMasterAutomate) {
            EXPECT_TRUE(state) << call.index;
            EXPECT_TRUE(std::isfinite(call.opt));
        } else {
            EXPECT_EQ(state, call.opcode == audioMasterEndEdit) << call.index;
            state = !state;
        }
    }
    for (int32_t i = 0; i < 39; ++i) EXPECT_FALSE(open[i]) << i;
}

TEST(AutomationTest, APersonAndAHostShareTheParameters)
{
    for (const bool echoes : {false, true}) {
        Session session;
        session.host.echoesAutomation = echoes;
        {
            const Automation automation(session.effect);
            Signals::Random random(echoes ? 11 : 5);
            for (int i = 0; i < 250; ++i) act(session, random);
        }
        session.desk->wait(0);
        const auto edits = session.takeEdits();
        EXPECT_GT(edits.size(), 100u);
        expectWholeGestures(edits);
        for (int32_t host = 0; host < 39; ++host) EXPECT_FALSE(session.editing(host)) << host;
        session.close();
        EXPECT_TRUE(session.takeEdits().empty());
    }
}

} // namespace
