#include <checkfence/assert.h>
#include <functor/assertion_recorder.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace nodeline::test {
namespace {

bool AssertThat(bool holds) {
    CHECKFENCE_ASSERT(holds, "it does not hold");
    return true;
}

void Ignore(const checkfence::assertion_t&) {}

void Throw(const checkfence::assertion_t& assertion) { throw std::logic_error(assertion.message); }

TEST(Assertion, ThatHoldsDoesNotReachTheHandler) {
    const AssertionRecorder recorder;
    EXPECT_TRUE(AssertThat(true));
    EXPECT_TRUE(AssertionRecorder::Entries().empty());
}

TEST(Assertion, HandlerIsToldWhatFailedAndWhere) {
    const AssertionRecorder recorder;
    EXPECT_TRUE(AssertThat(false));
    ASSERT_EQ(AssertionRecorder::Entries().size(), 1U);
    const AssertionRecorder::Entry entry = AssertionRecorder::Entries().front();
    EXPECT_EQ(entry.condition, "holds");
    EXPECT_EQ(entry.message, "it does not hold");
    EXPECT_NE(entry.file.find("assert_test.cpp"), std::string::npos);
    EXPECT_GT(entry.line, 0);
    EXPECT_NE(entry.function.find("AssertThat(bool"), std::string::npos) << "not a signature";
}

TEST(Assertion, CodeGoesOnWhenTheHandlerReturns) {
    const AssertionRecorder recorder;
    EXPECT_TRUE(AssertThat(false));
}

TEST(Assertion, HandlerMayThrow) {
    const auto before = checkfence::set_assertion_handler(&Throw);
    EXPECT_THROW(AssertThat(false), std::logic_error);
    checkfence::set_assertion_handler(before);
}

TEST(Assertion, InstallingAHandlerGivesBackTheOneBefore) {
    const auto before = checkfence::set_assertion_handler(&Ignore);
    EXPECT_EQ(checkfence::set_assertion_handler(&Throw), &Ignore);
    EXPECT_EQ(checkfence::set_assertion_handler(before), &Throw);
}

TEST(Assertion, ConditionIsEvaluatedOnce) {
    const AssertionRecorder recorder;
    int evaluations = 0;
    CHECKFENCE_ASSERT(++evaluations > 0, "it is counted");
    CHECKFENCE_ASSERT(++evaluations < 0, "it is counted");
    EXPECT_EQ(evaluations, 2);
    EXPECT_EQ(AssertionRecorder::Entries().size(), 1U);
}

#ifdef NDEBUG
TEST(Assertion, DefaultHandlerOfAReleaseBuildReturns) {
    const auto before = checkfence::set_assertion_handler(nullptr);
    EXPECT_TRUE(AssertThat(false));
    checkfence::set_assertion_handler(before);
}
#else
TEST(AssertionDeathTest, DefaultHandlerOfADebugBuildAbortsWithAMessage) {
    const auto before = checkfence::set_assertion_handler(nullptr);
    EXPECT_DEATH(AssertThat(false), "assertion 'holds' failed: it does not hold");
    checkfence::set_assertion_handler(before);
}
#endif

}  // namespace
}  // namespace nodeline::test
