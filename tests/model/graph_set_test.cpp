#include <gtest/gtest.h>
#include <nodeline/model/graph.h>
#include <support/ids.h>
#include <support/plain_set.h>
#include <support/random.h>

#include <vector>

namespace nodeline::test {
namespace {

using Set = NodeImplSet;

// A record of any id.
class NumberedRecord : public DefaultRootNodeImpl {
public:
    explicit NumberedRecord(int id) : id_(id) {}
    [[nodiscard]] int get_id() const override { return id_; }

private:
    int id_;
};

graph_ptr<INodeImpl> record(int id) { return {new NumberedRecord(id)}; }

graph_ptr<Set> set_of(const std::vector<int>& ids) {
    graph_ptr<Set> set(new Set);
    for (const int id : ids) set->Add(record(id));
    return set;
}

TEST(GraphSet, KeepsTheOrderOfInsertionAndDuplicates) {
    const auto set = set_of({5, 3, 5, 4});
    EXPECT_EQ(Ids(set), (std::vector<int>{5, 3, 5, 4}));
    EXPECT_EQ(set->GetCount(), 4);
    EXPECT_FALSE(set->IsSorted());
}

TEST(GraphSet, AddGivesThePlaceOfTheNewItem) {
    const auto set = set_of({5, 3});
    const Set::Iterator place = set->Add(record(4));
    EXPECT_EQ(place.index(), 2);
    EXPECT_EQ((*place)->get_id(), 4);
}

TEST(GraphSet, FindSortsItemsInPlace) {
    const auto set = set_of({5, 3, 4});
    EXPECT_EQ(set->Find(record(4)).index(), 1);
    EXPECT_EQ(Ids(set), (std::vector<int>{3, 4, 5}));
    EXPECT_EQ(set->GetItem(0)->get_id(), 3);
    EXPECT_TRUE(set->IsSorted());
}

TEST(GraphSet, FindOfAnItemGreaterThanAllGivesTheEnd) {
    const auto set = set_of({5, 3, 4});
    EXPECT_EQ(set->Find(record(9)), set->End());
}

TEST(GraphSet, FindOfAnAbsentItemGivesTheNextGreater) {
    const auto set = set_of({10, 30, 20});
    EXPECT_EQ(set->Find(record(15)).index(), 1);
    EXPECT_EQ(set->Find(record(1)).index(), 0);
    EXPECT_NE(set->Find(record(15)), set->End());
}

TEST(GraphSet, FindOfADuplicateGivesTheFirst) {
    const auto set = set_of({7, 5, 7, 7});
    EXPECT_EQ(set->Find(record(7)).index(), 1);
}

TEST(GraphSet, FindInAnEmptySetGivesTheEndAndMarksItSorted) {
    const auto set = set_of({});
    EXPECT_EQ(set->Find(record(1)), set->End());
    EXPECT_TRUE(set->IsSorted());
}

TEST(GraphSet, AddAfterFindStandsAtTheEndUntilTheNextFind) {
    const auto set = set_of({5, 3});
    set->Find(record(3));
    set->Add(record(4));
    EXPECT_FALSE(set->IsSorted());
    EXPECT_EQ(Ids(set), (std::vector<int>{3, 5, 4}));
    set->Find(record(3));
    EXPECT_EQ(Ids(set), (std::vector<int>{3, 4, 5}));
}

TEST(GraphSet, RemoveOfAnAbsentItemTakesTheNextGreater) {
    const auto set = set_of({10, 30, 20});
    set->Remove(record(15));
    EXPECT_EQ(Ids(set), (std::vector<int>{10, 30}));
}

TEST(GraphSet, RemoveOfAnItemGreaterThanAllTakesTheLast) {
    const auto set = set_of({10, 30, 20});
    set->Remove(record(99));
    EXPECT_EQ(Ids(set), (std::vector<int>{10, 20}));
}

TEST(GraphSet, RemoveFromAnEmptySetOnlyMarksItSorted) {
    const auto set = set_of({});
    set->Remove(record(1));
    EXPECT_EQ(set->GetCount(), 0);
    EXPECT_TRUE(set->IsSorted());
}

TEST(GraphSet, RemoveLeavesTheSetSorted) {
    const auto set = set_of({4, 2, 3, 1});
    set->Remove(record(2));
    EXPECT_TRUE(set->IsSorted());
    set->Remove(record(1));
    EXPECT_TRUE(set->IsSorted());
    EXPECT_EQ(Ids(set), (std::vector<int>{3, 4}));
}

TEST(GraphSet, ClearLeavesTheSortedFlagAsItStands) {
    const auto sorted = set_of({2, 1});
    sorted->Find(record(1));
    sorted->Clear();
    EXPECT_TRUE(sorted->IsSorted());
    EXPECT_EQ(sorted->GetCount(), 0);
    const auto unsorted = set_of({2, 1});
    unsorted->Clear();
    EXPECT_FALSE(unsorted->IsSorted());
}

TEST(GraphSet, SortUniqueKeepsOneItemOfEachId) {
    const auto set = set_of({3, 1, 3, 2, 1});
    set->SortUnique();
    EXPECT_EQ(Ids(set), (std::vector<int>{1, 2, 3}));
}

TEST(GraphSet, SortUniqueLeavesASetOfOneUnsorted) {
    const auto set = set_of({3});
    set->SortUnique();
    EXPECT_FALSE(set->IsSorted());
    EXPECT_EQ(Ids(set), (std::vector<int>{3}));
}

TEST(GraphSet, HoldsItsItemsUntilTheyAreTakenOut) {
    const graph_ptr<INodeImpl> first = record(1);
    const graph_ptr<INodeImpl> second = record(2);
    Set set;
    set.Add(first);
    set.Add(second);
    set.Add(second);
    EXPECT_EQ(first->GetRefCount(), 2);
    EXPECT_EQ(second->GetRefCount(), 3);
    set.Remove(first);
    EXPECT_EQ(first->GetRefCount(), 1);
    set.Clear();
    EXPECT_EQ(second->GetRefCount(), 1);
}

TEST(GraphSet, BehavesLikeAPlainVectorUnderAnySequenceOfCalls) {
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Random random(seed);
        Set set;
        PlainSet plain;
        for (int step = 0; step < 300; ++step) {
            const int id = random.Below(60);
            switch (random.Below(8)) {
                case 0:
                case 1:
                case 2:
                    set.Add(record(id));
                    plain.Add(id);
                    break;
                case 3:
                    ASSERT_EQ(set.Find(record(id)).index(), plain.Find(id));
                    break;
                case 4:
                    set.Remove(record(id));
                    plain.Remove(id);
                    break;
                case 5:
                case 6:
                    if (plain.ids.empty()) break;
                    set.Remove(record(plain.ids.front()));
                    plain.Remove(plain.ids.front());
                    break;
                default:
                    if (!random.OneIn(20)) break;
                    set.Clear();
                    plain.ids.clear();
            }
            ASSERT_EQ(Ids(set), plain.ids);
            ASSERT_EQ(set.IsSorted(), plain.sorted);
        }
    }
}

// Counts how many of its kind live, those in unused places included.
struct Tile {
    explicit Tile(int n = 0) : number(n) { ++alive; }
    Tile(const Tile& other) : number(other.number) { ++alive; }
    Tile& operator=(const Tile&) = default;
    ~Tile() { --alive; }
    bool operator<(const Tile& other) const { return number < other.number; }
    int number;
    static int alive;
};
int Tile::alive = 0;

TEST(GraphSet, TakingOutAtTheFrontAndAddingAtTheEndForEverDoesNotGrow) {
    GraphSet<Tile> set;
    for (int i = 0; i < 10; ++i) set.Add(Tile(i));
    for (int i = 10; i < 10000; ++i) {
        set.RemoveAt(0);
        set.Add(Tile(i));
        ASSERT_LE(Tile::alive, 30);
    }
    ASSERT_EQ(set.GetCount(), 10);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(set.GetItem(i).number, 9990 + i);
}

TEST(GraphSetIterator, StandsAtAnIndexOfOneSet) {
    const auto first = set_of({1, 2});
    const auto second = set_of({1, 2});
    EXPECT_EQ(first->Begin(), first->Begin());
    EXPECT_NE(first->Begin(), second->Begin());
    EXPECT_NE(first->Begin(), first->End());
}

TEST(GraphSetIterator, EndTakenBeforeAnAddIsNotTheNewEnd) {
    const auto set = set_of({1, 2});
    const Set::Iterator old_end = set->End();
    set->Add(record(3));
    Set::Iterator place = set->Begin();
    while (place != set->End()) place++;
    EXPECT_NE(place, old_end);
    EXPECT_EQ(place, set->End());
}

TEST(GraphSetIterator, PostfixIncrementGivesTheOldPlace) {
    const auto set = set_of({8, 9});
    Set::Iterator place = set->Begin();
    EXPECT_EQ((*place++)->get_id(), 8);
    EXPECT_EQ((*place)->get_id(), 9);
}

TEST(GraphSetIterator, FetchesAnewAtEachUse) {
    const auto set = set_of({5, 3});
    const Set::Iterator place = set->Begin();
    EXPECT_EQ((*place)->get_id(), 5);
    set->Find(record(3));
    EXPECT_EQ((*place)->get_id(), 3);
    EXPECT_EQ(place->get()->get_id(), 3);
}

TEST(GraphSetIterator, ServesRangeBasedLoops) {
    const auto set = set_of({5, 3, 4});
    std::vector<int> ids;
    for (const auto& item : *set) ids.push_back(item->get_id());
    EXPECT_EQ(ids, (std::vector<int>{5, 3, 4}));
}

TEST(RecordHandles, CompareByIdAndNotByAddress) {
    const auto three = record(3);
    const auto other_three = record(3);
    const auto four = record(4);
    EXPECT_TRUE(three == other_three);
    EXPECT_FALSE(three != other_three);
    EXPECT_TRUE(three < four);
    EXPECT_FALSE(four < three);
    EXPECT_FALSE(three < other_three);
    EXPECT_TRUE(three != four);
}

TEST(RecordHandles, CompareWithANumberFromBothSides) {
    const auto three = record(3);
    EXPECT_TRUE(three == 3);
    EXPECT_TRUE(3 == three);
    EXPECT_TRUE(three != 4);
    EXPECT_TRUE(4 != three);
    EXPECT_TRUE(record(0) == 0);
}

TEST(RecordHandles, OfEdgesCompareByIdToo) {
    const graph_ptr<INodeImpl> end = record(1);
    const graph_ptr<IEdgeImpl> first(new DefaultEdgeImpl(end, end));
    const graph_ptr<IEdgeImpl> second(new DefaultEdgeImpl(end, end));
    EXPECT_TRUE(first < second);
    EXPECT_FALSE(first == second);
    EXPECT_TRUE(first != second);
    EXPECT_TRUE(first == first->get_id());
    EXPECT_TRUE(first->get_id() == first);
    EXPECT_TRUE(first != second->get_id());
    EXPECT_TRUE(second->get_id() != first);
}

#ifdef NDEBUG
TEST(GraphSetMisuse, IndexOutOfRangeGivesAnEmptyItem) {
    const auto set = set_of({1});
    EXPECT_FALSE(set->GetItem(1));
    EXPECT_FALSE(set->GetItem(-1));
}
#else
TEST(GraphSetMisuseDeathTest, IndexOutOfRangeIsCaught) {
    const auto set = set_of({1});
    EXPECT_DEATH((void)set->GetItem(1), "index out of range");
    EXPECT_DEATH((void)set->GetItem(-1), "index out of range");
}
#endif

}  // namespace
}  // namespace nodeline::test
