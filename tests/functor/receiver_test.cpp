#include <functor/assertion_recorder.h>
#include <functor/listener.h>
#include <gtest/gtest.h>

#include <memory>

namespace nodeline::test {
namespace {

// A class of an application's own, with a slot, that knows nothing of signals.
class Counter {
public:
    virtual ~Counter() = default;
    void Count(int by) { total += by; }
    virtual void CountDouble(int by) { total += 2 * by; }
    int total = 0;
};

class Padding {
public:
    virtual ~Padding() = default;
    virtual void Pad() {}
    double padding[3] = {};
};

class Panel : public Padding, public Counter, public subscriber_base_t {
public:
    void CountDouble(int by) override { total += 20 * by; }
    void Overloaded(int by) { total += by; }
    void Overloaded(double) { total = -1; }
    void Look(int by) const { looks += by; }
    void CountNoexcept(int by) noexcept { total += by; }
    void CountConstReference(const int& by) { total += by; }
    mutable int looks = 0;
};

TEST(Receiver, SlotMayBeDeclaredInABaseThatIsNoSubscriber) {
    Panel panel;
    signal_t<int> signal;
    signal.connect(&panel, &Panel::Count);
    signal(3);
    EXPECT_EQ(panel.total, 3);
    signal.disconnect(&panel, &Panel::Count);
    signal(3);
    EXPECT_EQ(panel.total, 3);
}

TEST(Receiver, SubscriberPartMayLieInsideTheObject) {
    auto panel = std::make_unique<Panel>();
    ASSERT_NE(static_cast<void*>(static_cast<subscriber_base_t*>(panel.get())),
              static_cast<void*>(panel.get()));
    signal_t<int> signal;
    signal.connect(panel.get(), &Panel::Count);
    signal(1);
    EXPECT_EQ(panel->total, 1);
    panel.reset();
    signal(1);
}

TEST(Receiver, VirtualSlotCallsTheOverrider) {
    Panel panel;
    signal_t<int> signal;
    signal.connect(&panel, &Counter::CountDouble);
    signal(1);
    EXPECT_EQ(panel.total, 20);
}

TEST(Receiver, InheritedSlotIsTheSameThroughEitherClass) {
    const AssertionRecorder recorder;
    class SpecialPanel : public Panel {};
    SpecialPanel panel;
    signal_t<int> signal;
    signal.connect(&panel, &SpecialPanel::Count);
    signal.connect(static_cast<Panel*>(&panel), &Panel::Count);
    EXPECT_EQ(AssertionRecorder::Entries().size(), 1U);
    signal.disconnect(static_cast<Panel*>(&panel), &Counter::Count);
    signal(1);
    EXPECT_EQ(panel.total, 0);
}

TEST(Receiver, OverloadedSlotIsChosenByTheSignal) {
    Panel panel;
    signal_t<int> signal;
    signal.connect(&panel, &Panel::Overloaded);
    signal(5);
    EXPECT_EQ(panel.total, 5);
    signal.disconnect(&panel, &Panel::Overloaded);
    signal(5);
    EXPECT_EQ(panel.total, 5);
}

TEST(Receiver, SlotMayBeConst) {
    Panel panel;
    signal_t<int> signal;
    signal.connect(&panel, &Panel::Look);
    signal(2);
    signal.disconnect(&panel, &Panel::Look);
    signal(2);
    EXPECT_EQ(panel.looks, 2);
}

TEST(Receiver, SlotMayBeNoexcept) {
    Panel panel;
    signal_t<int> signal;
    signal.connect(&panel, &Panel::CountNoexcept);
    signal(2);
    signal.disconnect(&panel, &Panel::CountNoexcept);
    signal(2);
    EXPECT_EQ(panel.total, 2);
}

TEST(Receiver, SlotMayTakeAValueByConstReference) {
    Panel panel;
    signal_t<int> signal;
    signal.connect(&panel, &Panel::CountConstReference);
    signal(2);
    signal.disconnect(&panel, &Panel::CountConstReference);
    signal(2);
    EXPECT_EQ(panel.total, 2);
}

class VirtualCounter : public virtual subscriber_base_t {
public:
    void Count(int by) { total += by; }
    int total = 0;
};
class VirtualLooker : public virtual subscriber_base_t {
public:
    virtual void Look(int by) { looks += by; }
    int looks = 0;
};
class Diamond : public VirtualCounter, public VirtualLooker {
public:
    void Look(int by) override { looks += 10 * by; }
};

TEST(Receiver, MayInheritItsSubscriberPartVirtually) {
    auto diamond = std::make_unique<Diamond>();
    signal_t<int> signal;
    signal.connect(diamond.get(), &Diamond::Count);
    signal.connect(diamond.get(), &VirtualLooker::Look);
    signal(1);
    EXPECT_EQ(diamond->total, 1);
    EXPECT_EQ(diamond->looks, 10);
    signal.disconnect(diamond.get(), &Diamond::Count);
    signal.disconnect(diamond.get(), &VirtualLooker::Look);
    signal(1);
    EXPECT_EQ(diamond->total, 1);
    EXPECT_EQ(diamond->looks, 10);
    signal.connect(diamond.get(), &Diamond::Look);
    diamond.reset();
    signal(1);
}

class VirtuallyDerivedPanel : public virtual Panel {};

TEST(Receiver, MayInheritTheSlotVirtually) {
    VirtuallyDerivedPanel panel;
    signal_t<int> signal;
    signal.connect(&panel, &Panel::Count);
    signal(4);
    EXPECT_EQ(panel.total, 4);
}

// A signal may be a base of the class that emits it.
class Button : public signal_t<int> {
public:
    void Press() { (*this)(++presses); }
    int presses = 0;
};

TEST(Receiver, HearsASignalThatIsABaseOfItsOwner) {
    Panel panel;
    Button button;
    button.connect(&panel, &Panel::Count);
    button.Press();
    button.Press();
    EXPECT_EQ(panel.total, 3);
}

TEST(Receiver, MayBeASignalWhichThenPassesTheEmissionOn) {
    Panel panel;
    signal_t<int> first;
    signal_t<int> second;
    second.connect(&panel, &Panel::Count);
    first.connect(&second, &signal_t<int>::operator());
    first(6);
    EXPECT_EQ(panel.total, 6);
    first.disconnect(&second, &signal_t<int>::operator());
    first(6);
    EXPECT_EQ(panel.total, 6);
}

TEST(Receiver, ThatIsASignalIsDisconnectedWhenItDies) {
    Panel panel;
    signal_t<int> first;
    auto second = std::make_unique<signal_t<int>>();
    second->connect(&panel, &Panel::Count);
    first.connect(second.get(), &signal_t<int>::operator());
    second.reset();
    first(6);
    EXPECT_EQ(panel.total, 0);
}

TEST(Receiver, ThatIsASignalOutlivesTheOneItIsConnectedTo) {
    Panel panel;
    auto first = std::make_unique<signal_t<int>>();
    signal_t<int> second;
    second.connect(&panel, &Panel::Count);
    first->connect(&second, &signal_t<int>::operator());
    first.reset();
    second(6);
    EXPECT_EQ(panel.total, 6);
}

TEST(Receiver, ThatIsASignalMayDieInAnEmissionThatItPassesOn) {
    Log log;
    signal_t<> first;
    auto second = std::make_unique<signal_t<>>();
    Listener killer(log, "killer", [&] { second.reset(); });
    Listener late(log, "late");
    first.connect(second.get(), &signal_t<>::operator());
    first.connect(&late, &Listener::Hear);
    second->connect(&killer, &Listener::Hear);
    second->connect(&late, &Listener::HearToo);
    first();
    first();
    EXPECT_EQ(log, (Log{"killer", "late", "late"}));
}

TEST(Receiver, ThatIsASignalMaySeeTheFirstOneDieInItsEmission) {
    Log log;
    auto first = std::make_unique<signal_t<>>();
    signal_t<> second;
    Listener killer(log, "killer", [&] { first.reset(); });
    Listener late(log, "late");
    first->connect(&second, &signal_t<>::operator());
    first->connect(&late, &Listener::HearToo);
    second.connect(&killer, &Listener::Hear);
    second.connect(&late, &Listener::Hear);
    (*first)();
    EXPECT_EQ(log, (Log{"killer", "late"}));
}

TEST(Receiver, MayBeTheSignalItself) {
    Panel panel;
    auto signal = std::make_unique<signal_t<int>>();
    signal->connect(signal.get(), &signal_t<int>::operator());
    signal->connect(&panel, &Panel::Count);
    signal->disconnect(signal.get(), &signal_t<int>::operator());
    (*signal)(1);
    EXPECT_EQ(panel.total, 1);
    signal->connect(signal.get(), &signal_t<int>::operator());
    signal.reset();
}

}  // namespace
}  // namespace nodeline::test
