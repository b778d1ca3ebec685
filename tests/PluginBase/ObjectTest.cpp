#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "PluginBase/Util/Reflected.h"

namespace {

/// Emits sigNone() 0, sigPair(uint,float) 1, sigText(const String&) 2.
class Sender : public Reflected<Sender, Object> {
public:
    static constexpr const char *kClassName = "Sender";
    explicit Sender(const char *called = "sender") : Reflected(called) {}
    void sigNone() { emitSignal(0); }
    void sigPair(uint32_t id, float value) { emitSignal(1, id, value); }
    void sigText(const String &text) { emitSignal(2, text); }

    static std::span<const MetaEntry> signalTable()
    {
        static constexpr MetaParameter pair[] = {{"uID", "uint"}, {nullptr, "float"}};
        static constexpr MetaParameter text[] = {{"strName", "const String&"}};
        static constexpr MetaMethod methods[] = {metaMethod<&Sender::sigNone>("sigNone"),
                                                 metaMethod<&Sender::sigPair>("sigPair", pair),
                                                 metaMethod<&Sender::sigText>("sigText", text)};
        static constexpr MetaEntry rows[] = {{"sigNone()", &methods[0]},
                                             {"sigPair(uint,float)", &methods[1]},
                                             {"sigText(const String&)", &methods[2]}};
        return rows;
    }
};

/// Adds one signal to Sender's, receives, and may do something while it receives.
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
    void slotFloat(float value) { note(std::to_string(value)); }
    void sigAgain() { emitSignal(0); }

    static std::span<const MetaEntry> signalTable()
    {
        static constexpr MetaMethod again = metaMethod<&Receiver::sigAgain>("sigAgain");
        static constexpr MetaEntry rows[] = {{"sigAgain()", &again}};
        return rows;
    }
    static std::span<const MetaEntry> slotTable()
    {
        static constexpr MetaParameter pair[] = {{"iControl", "uint"}, {"fValue", "float"}};
        static constexpr MetaParameter id[] = {{"iControl", "uint"}}, value[] = {{"fValue", "float"}};
        static constexpr MetaParameter text[] = {{"strName", "const String&"}};
        static constexpr MetaMethod methods[] = {metaMethod<&Receiver::slotNone>("slotNone"),
                                                 metaMethod<&Receiver::slotId>("slotId", id),
                                                 metaMethod<&Receiver::slotPair>("slotPair", pair),
                                                 metaMethod<&Receiver::slotText>("slotText", text),
                                                 metaMethod<&Receiver::slotFloat>("slotFloat", value)};
        static constexpr MetaEntry rows[] = {{"slotNone()", &methods[0]},
                                             {"slotId(uint)", &methods[1]},
                                             {"slotPair(uint,float)", &methods[2]},
                                             {"slotText(const String&)", &methods[3]},
                                             {"slotFloat(float)", &methods[4]}};
        return rows;
    }

    std::vector<std::string> heard;
    std::function<void()> onHeard;

private:
    void note(std::string what)
    {
        heard.push_back(std::move(what));
        if (const auto act = onHeard) act(); // a copy: it may delete this object
    }
};

TEST(Object, ConnectsWhereTheTextsAreFoundAndTheParametersFit)
{
    const struct {
        const char *signal, *member;
        bool connects;
    } kCases[] = {
        {"2sigPair(uint, float)", "1slotPair( uint , float )", true},
        {"2  sigPair (uint,float)\t", "1slotId(uint)", true},
        {"2sigPair(uint,  float)", "1slotPair(uint,float)", false}, // of two blanks one stays
        {"2sigPair(uint,float)", "1slotNone()", true},
        {"2sigPair(uint,float)", "1slotFloat(float)", false},
        {"2sigNone()", "1slotId(uint)", false},
        {"1sigNone()", "1slotNone()", false},
        {"2sigNone()", "3slotNone()", false},
        {"2sigNone()", "slotNone()", false},
        {"2sigMissing()", "1slotNone()", false},
        {"", "1slotNone()", false},
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

TEST(Object, DeliversValuesInTheOrderOfConnection)
{
    Sender sender;
    Receiver a("a"), b("b");
    sender.sigPair(1, 2.0f); // nobody listens
    Object::connect(&sender, "2sigPair(uint,float)", &a, "1slotId(uint)");
    Object::connect(&sender, "2sigPair(uint,float)", &a, "1slotPair(uint,float)");
    Object::connect(&sender, "2sigPair(uint,float)", &a, "1slotId(uint)"); // twice: delivered twice
    Object::connect(&sender, "2sigText(const String&)", &a, "1slotText(const String&)");
    Object::connect(&sender, "2sigNone()", &a, "2sigAgain()");
    Object::connect(&a, "2sigAgain()", &b, "1slotNone()");
    sender.sigPair(7, 0.5f);
    sender.sigText("words");
    sender.sigNone();
    EXPECT_EQ(a.heard, (std::vector<std::string>{"id 7", "pair 7 0.500000", "id 7", "words"}));
    EXPECT_EQ(b.heard, std::vector<std::string>{"none"});

    SignalArgs tooFew{};
    EXPECT_FALSE(a.invokeSlot(1, tooFew) || a.invokeSlot(99, tooFew) || a.invokeSignal(1, tooFew));
}

TEST(Object, DisconnectsWhatFits)
{
    using Heard = std::pair<size_t, size_t>; // by two receivers of two signals each
    const auto heardAfter = [](const auto &change) {
        Sender sender;
        Receiver a("a"), b("b");
        for (Receiver *receiver : {&a, &b}) {
            Object::connect(&sender, "2sigNone()", receiver, "1slotNone()");
            Object::connect(&sender, "2sigPair(uint,float)", receiver, "1slotId(uint)");
        }
        change(sender, a, b);
        sender.sigNone();
        sender.sigPair(1, 0);
        return Heard(a.heard.size(), b.heard.size());
    };
    EXPECT_EQ(heardAfter([](Sender &sender, Receiver &a, Receiver &) {
                  Object::disconnect(&sender, "2sigNone()", &a, "1slotNone()");
              }),
              Heard(1, 2));
    EXPECT_EQ(heardAfter([](Sender &sender, Receiver &, Receiver &b) {
                  Object::disconnect(&sender, nullptr, &b, nullptr);
              }),
              Heard(2, 0));
    EXPECT_EQ(heardAfter([](Sender &sender, Receiver &, Receiver &) {
                  Object::disconnect(&sender, "2sigNone()", nullptr,
                                     "1slotNone()"); // without a receiver: nothing
                  Object::disconnect(&sender, "2sigMissing()", nullptr, nullptr);
              }),
              Heard(2, 2));
    EXPECT_EQ(
        heardAfter([](Sender &sender, Receiver &a, Receiver &) { // in a delivery of its sender: all stay
            a.onHeard = [&] { Object::disconnect(&sender, nullptr, nullptr, nullptr); };
        }),
        Heard(2, 2));
    Receiver late("late"); // connected in a delivery, it stays as well
    heardAfter([&](Sender &sender, Receiver &a, Receiver &) {
        a.onHeard = [&, isFirst = true]() mutable {
            if (!std::exchange(isFirst, false)) return;
            Object::connect(&sender, "2sigNone()", &late, "1slotNone()");
            Object::disconnect(&sender, nullptr, &late, nullptr);
        };
    });
    EXPECT_EQ(late.heard.size(), 1u);
    EXPECT_EQ(heardAfter([](Sender &sender, Receiver &, Receiver &) {
                  Receiver third("third");
                  Object::connect(&sender, "2sigText(const String&)", &third, "1slotNone()");
              }),
              Heard(0, 0))
        << "the death of one receiver silences its sender";
}

TEST(Object, DiesWithItsChildrenInTheMiddleOfADelivery)
{
    auto *sender = new Receiver("sender");
    auto *child = new Receiver("child");
    sender->addChild(child);
    sender->addChild(child);
    Receiver last("last"), added("added");
    Object::connect(sender, "2sigNone()", child, "1slotNone()");
    Object::connect(sender, "2sigNone()", &last, "1slotNone()");
    int deaths = 0;
    child->onHeard = [&] {
        Object::connect(sender, "2sigNone()", &added, "1slotNone()");
        if (++deaths == 2) delete sender;
    };
    sender->sigNone();
    EXPECT_EQ(last.heard.size(), 1u);
    EXPECT_EQ(added.heard.size(), 1u) << "connected during the delivery: delivered in the same";
    sender->sigNone();
    EXPECT_EQ(last.heard.size(), 1u) << "the sender died before its turn";
}

/// Under the address sanitizer this is the proof; alone it shows that nothing hangs or crashes.
TEST(Object, SurvivesRandomConnectsEmissionsAndDeaths)
{
    std::mt19937 random(20261124);
    const auto pick = [&](size_t count) {
        return std::uniform_int_distribution<size_t>(0, count - 1)(random);
    };
    constexpr size_t kObjects = 24;
    std::unique_ptr<Receiver> objects[kObjects];
    // The last signal drives slots only, and the last member is that signal: no circles.
    const char *const kSignals[] = {"2sigNone()", "2sigPair(uint,float)", "2sigText(const String&)",
                                    "2sigAgain()"};
    const char *const kMembers[] = {"1slotNone()", "1slotId(uint)", "1slotPair(uint,float)",
                                    "1slotText(const String&)", "2sigAgain()"};
    const auto connectSome = [&](Object *sender, Object *receiver) {
        const size_t signal = pick(std::size(kSignals));
        const size_t members = std::size(kMembers) - (signal + 1 == std::size(kSignals));
        Object::connect(sender, kSignals[signal], receiver, kMembers[pick(members)]);
    };
    int depth = 0;
    uint64_t heard = 0;
    std::function<void()> step = [&] {
        auto &object = objects[pick(kObjects)];
        auto &other = objects[pick(kObjects)];
        switch (pick(8)) {
        case 0: // a death, perhaps in its own delivery: the pointer goes first, the object after it
            std::exchange(object, nullptr).reset();
            break;
        case 1:
            if (object) break;
            object = std::make_unique<Receiver>("r");
            object->onHeard = [&] {
                ++heard;
                if (depth < 6 && pick(3) == 0) {
                    ++depth;
                    step();
                    --depth;
                }
            };
            break;
        case 2:
        case 3:
        case 4: connectSome(object.get(), other.get()); break;
        case 5: {
            const char *const signal = pick(2) ? kSignals[pick(std::size(kSignals))] : nullptr;
            Object::disconnect(object.get(), signal, pick(2) ? other.get() : nullptr, nullptr);
            break;
        }
        default:
            if (!object || depth > 3) break;
            ++depth;
            if (pick(2))
                object->sigPair(3, 0.5f);
            else
                object->sigNone();
            --depth;
        }
    };
    for (int i = 0; i < 300000; ++i) step();
    EXPECT_GT(heard, 1000u);
}

} // namespace
