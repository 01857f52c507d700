#include <functor/assertion_recorder.h>
#include <functor/listener.h>
#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace nodeline::test {
namespace {

using corvex::_internal::connection_t;
using corvex::_internal::typeless_connection_t;

static_assert(!std::is_copy_constructible_v<signal_t<>>);
static_assert(!std::is_copy_assignable_v<signal_t<>>);
static_assert(!std::is_move_constructible_v<signal_t<>>);
static_assert(std::is_base_of_v<subscriber_base_t, signal_t<int>>);
static_assert(sizeof(typeless_connection_t) == 2 * sizeof(void*));

constexpr const char* kExists = "signal_t::_insert: this connection is already exists.";
constexpr const char* kUnknown = "signal_t::disconnect: attempt to disconnect unknown connection";

TEST(Connection, SlotsAreCalledInTheOrderOfConnection) {
    Log log;
    Listener a(log, "a");
    Listener b(log, "b");
    Listener c(log, "c");
    signal_t<> signal;
    signal.connect(&b, &Listener::Hear);
    signal.connect(&a, &Listener::Hear);
    signal.connect(&c, &Listener::Hear);
    signal();
    EXPECT_EQ(log, (Log{"b", "a", "c"}));
}

TEST(Connection, DisconnectedSlotIsNotCalledAgain) {
    Log log;
    Listener a(log, "a");
    Listener b(log, "b");
    signal_t<> signal;
    signal.connect(&a, &Listener::Hear);
    signal.connect(&b, &Listener::Hear);
    signal.disconnect(&a, &Listener::Hear);
    signal();
    EXPECT_EQ(log, (Log{"b"}));
}

TEST(Connection, SlotThatIsConnectedAgainComesLast) {
    Log log;
    Listener a(log, "a");
    Listener b(log, "b");
    signal_t<> signal;
    signal.connect(&a, &Listener::Hear);
    signal.connect(&b, &Listener::Hear);
    signal.disconnect(&a, &Listener::Hear);
    signal.connect(&a, &Listener::Hear);
    signal();
    EXPECT_EQ(log, (Log{"b", "a"}));
}

TEST(Connection, ConnectingTwiceAssertsAndConnectsOnce) {
    const AssertionRecorder recorder;
    Log log;
    Listener a(log, "a");
    signal_t<> signal;
    signal.connect(&a, &Listener::Hear);
    EXPECT_TRUE(AssertionRecorder::Entries().empty());
    signal.connect(&a, &Listener::Hear);
    ASSERT_EQ(AssertionRecorder::Entries().size(), 1U);
    const AssertionRecorder::Entry entry = AssertionRecorder::Entries().front();
    EXPECT_EQ(entry.condition, "false");
    EXPECT_EQ(entry.message, kExists);
    EXPECT_NE(entry.function.find("_insert"), std::string::npos);
    signal();
    EXPECT_EQ(log, (Log{"a"}));
}

TEST(Connection, SameObjectWithADifferentMethodIsASecondConnection) {
    const AssertionRecorder recorder;
    Log log;
    Listener a(log, "a");
    signal_t<> signal;
    signal.connect(&a, &Listener::Hear);
    signal.connect(&a, &Listener::HearToo);
    EXPECT_TRUE(AssertionRecorder::Entries().empty());
    signal();
    EXPECT_EQ(log, (Log{"a", "a too"}));
}

TEST(Connection, SameMethodOfAnotherObjectIsASecondConnection) {
    const AssertionRecorder recorder;
    Log log;
    Listener a(log, "a");
    Listener b(log, "b");
    signal_t<> signal;
    signal.connect(&a, &Listener::Hear);
    signal.connect(&b, &Listener::Hear);
    EXPECT_TRUE(AssertionRecorder::Entries().empty());
    signal();
    EXPECT_EQ(log, (Log{"a", "b"}));
}

TEST(Connection, DisconnectingWhatWasNeverConnectedAssertsAndChangesNothing) {
    const AssertionRecorder recorder;
    Log log;
    Listener a(log, "a");
    Listener b(log, "b");
    signal_t<> signal;
    signal.connect(&a, &Listener::Hear);
    signal.disconnect(&b, &Listener::Hear);
    signal.disconnect(&a, &Listener::HearToo);
    ASSERT_EQ(AssertionRecorder::Entries().size(), 2U);
    const AssertionRecorder::Entry entry = AssertionRecorder::Entries().front();
    EXPECT_EQ(entry.condition, "subscriber_found");
    EXPECT_EQ(entry.message, kUnknown);
    EXPECT_NE(entry.function.find("_erase"), std::string::npos);
    signal();
    EXPECT_EQ(log, (Log{"a"}));
}

TEST(Connection, LockIsFreeAfterAnAssertionThatReturns) {
    const AssertionRecorder recorder;
    Log log;
    Listener a(log, "a");
    signal_t<> signal;
    signal.connect(&a, &Listener::Hear);
    signal.connect(&a, &Listener::Hear);
    signal.disconnect(&a, &Listener::HearToo);
    signal.disconnect(&a, &Listener::Hear);
    signal();
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(AssertionRecorder::Entries().size(), 2U);
}

TEST(Connection, NullReceiverOrSlotAssertsAndConnectsNothing) {
    const AssertionRecorder recorder;
    Log log;
    Listener a(log, "a");
    Listener* const nobody = nullptr;
    void (Listener::*const nothing)() = nullptr;
    signal_t<> signal;
    signal.connect(nobody, &Listener::Hear);
    signal.connect(&a, nothing);
    EXPECT_EQ(AssertionRecorder::Entries().size(), 2U);
    signal.disconnect(nobody, &Listener::Hear);
    signal.disconnect(&a, nothing);
    EXPECT_EQ(AssertionRecorder::Entries().size(), 4U);
    signal();
    EXPECT_TRUE(log.empty());
}

TEST(Connection, NullReceiverDisconnectsNothingDuringAnEmission) {
    const AssertionRecorder recorder;
    Log log;
    signal_t<> signal;
    Listener a(log, "a");
    Listener b(log, "b");
    a.then = [&] {
        signal.disconnect(&a, &Listener::Hear);
        signal.disconnect(static_cast<Listener*>(nullptr), &Listener::Hear);
    };
    signal.connect(&a, &Listener::Hear);
    signal.connect(&b, &Listener::Hear);
    signal();
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "b"}));
}

TEST(Connection, OneSlotCanHearSeveralSignals) {
    Log log;
    Listener a(log, "a");
    signal_t<> first;
    signal_t<> second;
    first.connect(&a, &Listener::Hear);
    second.connect(&a, &Listener::Hear);
    first.disconnect(&a, &Listener::Hear);
    first();
    EXPECT_TRUE(log.empty());
    second();
    EXPECT_EQ(log, (Log{"a"}));
}

TEST(Connection, EraseAllTakesEveryConnectionAway) {
    Log log;
    auto a = std::make_unique<Listener>(log, "a");
    Listener b(log, "b");
    OpenSignal signal;
    signal.connect(a.get(), &Listener::Hear);
    signal.connect(a.get(), &Listener::HearToo);
    signal.connect(&b, &Listener::Hear);
    signal._erase_all();
    signal();
    EXPECT_TRUE(log.empty());
    a.reset();
    signal.connect(&b, &Listener::Hear);
    signal();
    EXPECT_EQ(log, (Log{"b"}));
}

// A connection is told that its subscriber dies only if the subscriber still refers to the signal.
// With a subscriber apart from the object that is called, the reference can be seen from outside.
class BackReference : public testing::Test {
protected:
    connection_t Connection(void (Listener::*slot)()) {
        connection_t connection = OpenSignal::make_connection(&listener, slot);
        connection.subscriber = subscriber.get();
        return connection;
    }

    Log log;
    Listener listener{log, "a"};
    std::unique_ptr<subscriber_base_t> subscriber = std::make_unique<subscriber_base_t>();
    OpenSignal signal;
};

TEST_F(BackReference, TellsTheSignalThatItsSubscriberDied) {
    signal._insert(Connection(&Listener::Hear));
    signal._insert(Connection(&Listener::HearToo));
    subscriber.reset();
    signal();
    EXPECT_TRUE(log.empty());
}

TEST_F(BackReference, IsGoneForAllSlotsAfterTheFirstDisconnect) {
    signal._insert(Connection(&Listener::Hear));
    signal._insert(Connection(&Listener::HearToo));
    signal._erase(Connection(&Listener::Hear));
    subscriber.reset();
    signal();
    EXPECT_EQ(log, (Log{"a too"})) << "the second connection stays, and nobody told the signal";
    signal._erase(Connection(&Listener::HearToo));
}

TEST_F(BackReference, ToOtherSignalsStaysAfterADisconnect) {
    OpenSignal other;
    signal._insert(Connection(&Listener::Hear));
    other._insert(Connection(&Listener::HearToo));
    signal._erase(Connection(&Listener::Hear));
    subscriber.reset();
    other();
    EXPECT_TRUE(log.empty());
}

TEST_F(BackReference, ComesBackWithANewConnection) {
    signal._insert(Connection(&Listener::Hear));
    signal._erase(Connection(&Listener::Hear));
    signal._insert(Connection(&Listener::Hear));
    subscriber.reset();
    signal();
    EXPECT_TRUE(log.empty());
}

TEST_F(BackReference, StaysIfTheErasedConnectionNamesNoSubscriber) {
    signal._insert(Connection(&Listener::Hear));
    signal._insert(Connection(&Listener::HearToo));
    connection_t anonymous = Connection(&Listener::Hear);
    anonymous.subscriber = nullptr;
    signal._erase(anonymous);
    signal();
    EXPECT_EQ(log, (Log{"a too"}));
    subscriber.reset();
    signal();
    EXPECT_EQ(log, (Log{"a too"})) << "the subscriber still told the signal";
}

TEST_F(BackReference, PlaysNoPartInComparingConnections) {
    const AssertionRecorder recorder;
    subscriber_base_t someone_else;
    connection_t connection = Connection(&Listener::Hear);
    signal._insert(connection);
    connection.subscriber = &someone_else;
    connection.caster = nullptr;
    signal._insert(connection);
    ASSERT_EQ(AssertionRecorder::Entries().size(), 1U);
    EXPECT_EQ(AssertionRecorder::Entries().front().message, kExists);
    signal();
    EXPECT_EQ(log, (Log{"a"}));
}

}  // namespace
}  // namespace nodeline::test
