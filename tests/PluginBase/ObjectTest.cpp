#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "PluginBase/Util/Reflected.h"

namespace {

class Sender : public Reflected<Sender, Object> {
public:
    static constexpr const char *kClassName = "Sender";
    explicit Sender(const char *called = "sender") : Reflected(called) {}
    void sigNone() { emitSignal<&Sender::sigNone>(); }
    void sigPair(uint32_t id, float value) { emitSignal<&Sender::sigPair>(id, value); }
    void sigText(const String &text) { emitSignal<&Sender::sigText>(text); }

    using Signals =
        MetaRows<Meta<&Sender::sigNone>, Meta<&Sender::sigPair, "uID">, Meta<&Sender::sigText, "strName">>;
};

/// A Sender with one more signal. Its slots record their arguments and call `onReceived`.
class Receiver : public Reflected<Receiver, Sender> {
public:
    static constexpr const char *kClassName = "Receiver";
    using Reflected::Reflected;
    void slotNone() { note("none"); }
    void slotId(uint32_t id) { note("id " + std::to_string(id)); }
    void slotPair(uint32_t id, float value)
    {
        note("pair " + std::to_string(id) + " " + std::to_string(value));
    }
    void slotText(const String &text) { note(text.c_str()); }
    void sigAgain() { emitSignal<&Receiver::sigAgain>(); }

    using Signals = MetaRows<Meta<&Receiver::sigAgain>>;
    using Slots =
        MetaRows<Meta<&Receiver::slotNone>, Meta<&Receiver::slotId, "iControl">,
                 Meta<&Receiver::slotPair, "iControl", "fValue">, Meta<&Receiver::slotText, "strName">>;

    std::vector<std::string> received;
    std::function<void()> onReceived;

private:
    void note(std::string what)
    {
        received.push_back(std::move(what));
        if (const auto act = onReceived) act(); // a copy, as it may delete this object
    }
};

TEST(Object, ConnectsOnlyKnownMembersWithCompatibleParameters)
{
    const struct {
        const char *signal, *member;
        bool connects;
    } kCases[] = {
        {"2sigPair(uint, float)", "1slotPair( uint , float )", true},
        {"2  sigPair (uint,float)\t", "1slotId(uint)", true},
        {"2sigPair(uint,  float)", "1slotPair(uint,float)",
         false}, // two spaces collapse to one and do not match
        {"2sigPair(uint,float)", "1slotNone()", true},
        {"2sigPair(uint,float)", "1slotText(const String&)", false},
        {"2sigNone()", "1slotId(uint)", false},
        {"1sigNone()", "1slotNone()", false},
        {"2sigNone()", "slotNone()", false},
        {"2sigMissing()", "1slotNone()", false},
        {nullptr, "1slotNone()", false},
        {"2sigNone()", nullptr, false},
    };
    for (const auto &c : kCases) {
        Receiver a("a"), b("b");
        EXPECT_EQ(Object::connect(&a, c.signal, &b, c.member), c.connects)
            << (c.signal ? c.signal : "null") << " to " << (c.member ? c.member : "null");
    }
    Receiver a("a");
    EXPECT_FALSE(Object::connect(nullptr, "2sigNone()", &a, "1slotNone()"));
    EXPECT_FALSE(Object::connect(&a, "2sigNone()", nullptr, "1slotNone()"));
}

TEST(Object, RefusedWireIsCountedAndAbortsDebugBuilds)
{
    Receiver a("a");
    const uint32_t before = Object::refusedConnections();
    wire<&Sender::sigPair, &Receiver::slotId>(&a, &a);
    EXPECT_EQ(before, Object::refusedConnections());
    const auto connectWrongly = [&] {
        wire<&Sender::sigPair, &Receiver::slotText>(&a, &a);
        EXPECT_EQ(before + 1, Object::refusedConnections());
    };
    EXPECT_DEBUG_DEATH(connectWrongly(), "refused");
}

TEST(Object, DeliversInOrderOfConnection)
{
    Sender sender;
    Receiver a("a"), b("b");
    sender.sigPair(1, 2.0f); // not connected yet
    Object::mustConnect(&sender, "2sigPair(uint,float)", &a, "1slotId(uint)");
    Object::mustConnect(&sender, "2sigPair(uint,float)", &a, "1slotPair(uint,float)");
    Object::mustConnect(&sender, "2sigPair(uint,float)", &a, "1slotId(uint)"); // again: delivered twice
    Object::mustConnect(&sender, "2sigText(const String&)", &a, "1slotText(const String&)");
    Object::mustConnect(&sender, "2sigNone()", &a, "2sigAgain()");
    Object::mustConnect(&a, "2sigAgain()", &b, "1slotNone()");
    sender.sigPair(7, 0.5f);
    sender.sigText("words");
    sender.sigNone();
    EXPECT_EQ(a.received, (std::vector<std::string>{"id 7", "pair 7 0.500000", "id 7", "words"}));
    EXPECT_EQ(b.received, std::vector<std::string>{"none"});
}

TEST(Object, DisconnectSparesCurrentDeliveryAndReceiverDeathClearsSender)
{
    Sender sender;
    Receiver a("a"), b("b"), late("late");
    for (Receiver *receiver : {&a, &b}) Object::mustConnect(&sender, "2sigNone()", receiver, "1slotNone()");
    bool isFirst = true;
    a.onReceived = [&] {
        Object::disconnect(&sender, nullptr, nullptr, nullptr);
        if (!std::exchange(isFirst, false)) return;
        Object::mustConnect(&sender, "2sigNone()", &late, "1slotNone()");
        Object::disconnect(&sender, nullptr, &late, nullptr);
    };
    sender.sigNone();
    EXPECT_TRUE(a.received.size() == 1 && b.received.size() == 1 && late.received.size() == 1);
    Object::disconnect(&sender, "2sigNone()", &b, "1slotNone()");
    sender.sigNone();
    EXPECT_TRUE(a.received.size() == 2 && b.received.size() == 1 && late.received.size() == 2);
    {
        Receiver dying("dying");
        Object::mustConnect(&sender, "2sigPair(uint,float)", &dying, "1slotNone()");
    }
    sender.sigNone();
    EXPECT_TRUE(a.received.size() == 2 && late.received.size() == 2);
}

TEST(Object, MayBeDeletedWithItsChildrenDuringDelivery)
{
    auto *sender = new Receiver("sender");
    auto *child = new Receiver("child");
    sender->addChild(child);
    sender->addChild(child);
    Receiver last("last"), added("added");
    Object::mustConnect(sender, "2sigNone()", child, "1slotNone()");
    Object::mustConnect(sender, "2sigNone()", &last, "1slotNone()");
    int deaths = 0;
    child->onReceived = [&] {
        Object::mustConnect(sender, "2sigNone()", &added, "1slotNone()");
        if (++deaths == 2) delete sender;
    };
    sender->sigNone();
    EXPECT_EQ(last.received.size(), 1u);
    EXPECT_EQ(added.received.size(), 1u) << "connected during the delivery";
    sender->sigNone();
    EXPECT_EQ(last.received.size(), 1u) << "deleted during the delivery";
}

// The address sanitizer build checks for use of deleted objects; other builds only for crashes and hangs.
TEST(Object, SurvivesRandomConnectionsSignalsAndDeletions)
{
    std::mt19937 random(20261124);
    const auto below = [&](size_t count) {
        return std::uniform_int_distribution<size_t>(0, count - 1)(random);
    };
    std::unique_ptr<Receiver> objects[24];
    // sigAgain is never connected to itself, which would recurse without end.
    const char *const kSignals[] = {"2sigNone()", "2sigPair(uint,float)", "2sigText(const String&)",
                                    "2sigAgain()"};
    const char *const kMembers[] = {"1slotNone()", "1slotId(uint)", "1slotPair(uint,float)",
                                    "1slotText(const String&)", "2sigAgain()"};
    int depth = 0;
    uint64_t received = 0;
    std::function<void()> step = [&] {
        std::unique_ptr<Receiver> &object = objects[below(std::size(objects))];
        Receiver *const other = objects[below(std::size(objects))].get();
        const size_t what = below(8), signal = below(std::size(kSignals));
        const bool perhaps = below(2);
        if (what == 0) { // clear the pointer first: the object may be deleted during its own delivery
            std::exchange(object, nullptr).reset();
        } else if (what < 4) {
            const size_t members = std::size(kMembers) - (signal + 1 == std::size(kSignals));
            (void)Object::connect(object.get(), kSignals[signal], other, kMembers[below(members)]);
        } else if (what == 4) {
            Object::disconnect(object.get(), perhaps ? kSignals[signal] : nullptr, other, nullptr);
        } else if (!object) {
            object = std::make_unique<Receiver>("r");
            object->onReceived = [&] {
                ++received;
                if (below(3) == 0) step();
            };
        } else if (depth < 2) {
            ++depth;
            if (perhaps)
                object->sigPair(3, 0.5f);
            else
                object->sigNone();
            --depth;
        }
    };
    for (int i = 0; i < 300000; ++i) step();
    EXPECT_GT(received, 1000u);
}

} // namespace
