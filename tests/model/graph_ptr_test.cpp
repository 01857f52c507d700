#include <gtest/gtest.h>
#include <nodeline/model/graph_ptr.h>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace nodeline::test {
namespace {

// Counts how many of its kind live, and does something when it dies.
class Probe : public Countable {
public:
    Probe() { ++alive; }
    Probe(const Probe& other) : Countable(other) { ++alive; }
    Probe& operator=(const Probe&) = default;
    ~Probe() override {
        if (on_death) on_death();
        --alive;
    }

    std::function<void()> on_death;
    static int alive;
};
int Probe::alive = 0;

class DerivedProbe : public Probe {
public:
    ~DerivedProbe() override { ++derived_deaths; }
    static int derived_deaths;
};
int DerivedProbe::derived_deaths = 0;

class GraphPtr : public ::testing::Test {
protected:
    void SetUp() override { Probe::alive = DerivedProbe::derived_deaths = 0; }
};
using GraphPtr2 = GraphPtr;

TEST_F(GraphPtr, NewObjectIsUncountedUntilAHandleTakesIt) {
    auto* object = new Probe;
    EXPECT_EQ(object->GetRefCount(), 0);
    const graph_ptr<Probe> handle(object);
    EXPECT_EQ(object->GetRefCount(), 1);
}

TEST_F(GraphPtr, LastHandleDeletesTheObject) {
    graph_ptr<Probe> first(new Probe);
    {
        const graph_ptr<Probe> second(first);
        EXPECT_EQ(first->GetRefCount(), 2);
    }
    EXPECT_EQ(first->GetRefCount(), 1);
    EXPECT_EQ(Probe::alive, 1);
    first = graph_ptr<Probe>();
    EXPECT_EQ(Probe::alive, 0);
}

TEST_F(GraphPtr, DefaultHandleIsNull) {
    const graph_ptr<Probe> handle;
    const graph_ptr<Probe> copy(handle);
    EXPECT_FALSE(copy);
    EXPECT_EQ(copy.get(), nullptr);
}

TEST_F(GraphPtr, AssignmentOfTheSameObjectKeepsTheCount) {
    graph_ptr<Probe> first(new Probe);
    const graph_ptr<Probe> second(first);
    first = second;
    EXPECT_EQ(first->GetRefCount(), 2);
    const graph_ptr<Probe>& itself = first;
    first = itself;
    EXPECT_EQ(first->GetRefCount(), 2);
}

TEST_F(GraphPtr, AssignmentReleasesTheOldObjectAndSharesTheNew) {
    graph_ptr<Probe> first(new Probe);
    const graph_ptr<Probe> second(new Probe);
    first = second;
    EXPECT_EQ(Probe::alive, 1);
    EXPECT_EQ(first.get(), second.get());
    EXPECT_EQ(second->GetRefCount(), 2);
}

TEST_F(GraphPtr, MoveTakesTheCountAlong) {
    graph_ptr<Probe> first(new Probe);
    graph_ptr<Probe> second(std::move(first));
    EXPECT_EQ(second->GetRefCount(), 1);
    graph_ptr<Probe> third(new Probe);
    third = std::move(second);
    EXPECT_EQ(third->GetRefCount(), 1);
    EXPECT_EQ(Probe::alive, 1);
}

TEST_F(GraphPtr, HandleOnADerivedTypeSharesObjectAndCount) {
    graph_ptr<DerivedProbe> derived(new DerivedProbe);
    graph_ptr<Probe> base(derived);
    EXPECT_EQ(base.get(), derived.get());
    EXPECT_EQ(base->GetRefCount(), 2);
    derived = graph_ptr<DerivedProbe>();
    base = graph_ptr<Probe>();
    EXPECT_EQ(DerivedProbe::derived_deaths, 1);
}

TEST_F(GraphPtr, CopyOfAnObjectHasACountOfItsOwn) {
    const graph_ptr<Probe> handle(new Probe);
    Probe copy(*handle);
    EXPECT_EQ(copy.GetRefCount(), 0);
    copy = *handle;
    EXPECT_EQ(copy.GetRefCount(), 0);
    EXPECT_EQ(handle->GetRefCount(), 1);
}

TEST_F(GraphPtr, HandleMayBeAssignedFromWithinTheObjectThatItReleases) {
    struct Link : Probe {
        graph_ptr<Link> next;
    };
    graph_ptr<Link> list(new Link);
    list->next = graph_ptr<Link>(new Link);
    const Link* second = list->next.get();
    list = list->next;
    EXPECT_EQ(list.get(), second);
    EXPECT_EQ(list->GetRefCount(), 1);
    EXPECT_EQ(Probe::alive, 1);
}

TEST_F(GraphPtr, DestructorOfCountedObjectsIsVirtual) {
    EXPECT_TRUE(std::has_virtual_destructor_v<Countable>);
    EXPECT_TRUE(std::is_abstract_v<Countable>);
    EXPECT_FALSE(std::is_abstract_v<Counter>);
}

TEST_F(GraphPtr2, EmptyHandleHasNoCounterAndResetDoesNothing) {
    graph_ptr2<Probe> handle(nullptr, true);
    EXPECT_EQ(handle.GetRefCount(), 0);
    EXPECT_TRUE(handle.owns());
    handle.reset();
    EXPECT_FALSE(handle);
    EXPECT_TRUE(handle.owns());
}

TEST_F(GraphPtr2, DefaultHandleIsEmptyAndOwns) {
    const graph_ptr2<Probe> handle;
    EXPECT_EQ(handle.get(), nullptr);
    EXPECT_TRUE(handle.owns());
}

TEST_F(GraphPtr2, LastOwningHandleDeletesTheObject) {
    graph_ptr2<Probe> first(new Probe, true);
    graph_ptr2<Probe> second(first);
    EXPECT_EQ(first.GetRefCount(), 2);
    first.reset();
    EXPECT_EQ(Probe::alive, 1);
    EXPECT_EQ(second.GetRefCount(), 1);
    second.reset();
    EXPECT_EQ(Probe::alive, 0);
}

TEST_F(GraphPtr2, HandleThatDoesNotOwnLeavesTheObjectAlive) {
    Probe object;
    {
        const graph_ptr2<Probe> first(&object, false);
        const graph_ptr2<Probe> second(first);
        EXPECT_FALSE(second.owns());
        EXPECT_EQ(second.GetRefCount(), 2);
    }
    EXPECT_EQ(Probe::alive, 1);
}

TEST_F(GraphPtr2, ResetKeepsWhetherTheHandleOwns) {
    Probe object;
    graph_ptr2<Probe> handle(&object, false);
    handle.reset();
    EXPECT_FALSE(handle);
    EXPECT_EQ(handle.GetRefCount(), 0);
    EXPECT_FALSE(handle.owns());
}

TEST_F(GraphPtr2, AssignmentFromACopyKeepsTheObject) {
    graph_ptr2<Probe> first(new Probe, true);
    const graph_ptr2<Probe> second(first);
    first = second;
    EXPECT_EQ(Probe::alive, 1);
    EXPECT_EQ(first.GetRefCount(), 2);
    EXPECT_EQ(first.get(), second.get());
}

TEST_F(GraphPtr2, AssignmentOfASoleHandleToItselfChangesNothing) {
    graph_ptr2<Probe> handle(new Probe, true);
    const Probe* object = handle.get();
    const graph_ptr2<Probe>& itself = handle;
    handle = itself;
    EXPECT_EQ(handle.get(), object);
    EXPECT_EQ(handle.GetRefCount(), 1);
    EXPECT_EQ(Probe::alive, 1);
}

TEST_F(GraphPtr2, AssignmentTakesObjectCountAndOwnership) {
    Probe object;
    graph_ptr2<Probe> first(new Probe, true);
    const graph_ptr2<Probe> second(&object, false);
    first = second;
    EXPECT_EQ(Probe::alive, 1);
    EXPECT_EQ(first.get(), &object);
    EXPECT_FALSE(first.owns());
    EXPECT_EQ(first.GetRefCount(), 2);
}

TEST_F(GraphPtr2, AssignmentOfAnEmptyHandleReleases) {
    graph_ptr2<Probe> handle(new Probe, true);
    handle = graph_ptr2<Probe>();
    EXPECT_EQ(Probe::alive, 0);
    EXPECT_FALSE(handle);
}

TEST_F(GraphPtr2, HandleMayBeAssignedFromWithinTheObjectThatItReleases) {
    struct Link : Probe {
        graph_ptr2<Link> next;
    };
    graph_ptr2<Link> list(new Link, true);
    list->next = graph_ptr2<Link>(new Link, true);
    const Link* second = list->next.get();
    list = list->next;
    EXPECT_EQ(list.get(), second);
    EXPECT_EQ(list.GetRefCount(), 1);
    EXPECT_EQ(Probe::alive, 1);
}

TEST_F(GraphPtr2, ObjectDiesBeforeItsCounter) {
    graph_ptr2<Probe> handle(new Probe, true);
    int count_at_death = -1;
    handle->on_death = [&] { count_at_death = handle.GetRefCount(); };
    handle.reset();
    EXPECT_EQ(count_at_death, 1);
}

TEST_F(GraphPtr2, HandlesMadeSeparatelyKnowNothingOfEachOther) {
    Probe object;
    const graph_ptr2<Probe> first(&object, false);
    const graph_ptr2<Probe> second(&object, false);
    EXPECT_EQ(first.GetRefCount(), 1);
    EXPECT_EQ(second.GetRefCount(), 1);
}

TEST_F(GraphPtr2, HandleOnADerivedTypeSharesCountAndOwnership) {
    graph_ptr2<DerivedProbe> derived(new DerivedProbe, true);
    graph_ptr2<Probe> base(derived);
    EXPECT_EQ(base.GetRefCount(), 2);
    EXPECT_TRUE(base.owns());
    derived.reset();
    EXPECT_EQ(Probe::alive, 1);
    base.reset();
    EXPECT_EQ(DerivedProbe::derived_deaths, 1);
    EXPECT_EQ(Probe::alive, 0);
}

TEST_F(GraphPtr2, PointeeNeedsNoCountOfItsOwn) {
    const graph_ptr2<int> number(new int(7), true);
    const graph_ptr2<int> copy(number);
    EXPECT_EQ(*copy, 7);
    EXPECT_EQ(copy.GetRefCount(), 2);
}

TEST_F(GraphPtr2, CheckedUpcastSharesTheObject) {
    const graph_ptr2<DerivedProbe> derived(new DerivedProbe, true);
    const graph_ptr2<Probe> base = checked_upcast<Probe>(derived);
    EXPECT_EQ(base.get(), derived.get());
    EXPECT_EQ(base.GetRefCount(), 2);
}

TEST_F(GraphPtr2, CheckedUpcastOfAnEmptyHandleThrowsBadCast) {
    EXPECT_THROW(checked_upcast<Probe>(graph_ptr2<DerivedProbe>()), std::bad_cast);
}

}  // namespace
}  // namespace nodeline::test
