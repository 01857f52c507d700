#include <formats/read_file.h>
#include <nodeline/layout/stable_layout.h>

#include <gtest/gtest.h>

namespace nodeline::formats {
namespace {

const std::string kLayout =
    "{\"root\":{\"position\":[0.0,0.0],\"size\":[270.5,44.0]},\n\"nodes\":[\n"
    "{\"id\":3,\"caption\":\"parse\",\"owner\":9,\"position\":[35.0,12.25],\"size\":[100.0,20.0],"
    "\"hidden\":false},\n"
    "{\"id\":9,\"caption\":\"all\",\"owner\":0,\"position\":[30.0,2.0],\"size\":[110.0,35.0],"
    "\"hidden\":false},\n"
    "{\"id\":4,\"caption\":\"check\",\"owner\":0,\"position\":[175.0,12.0],\"size\":[60.0,20.0],"
    "\"hidden\":false}],\n\"edges\":[\n"
    "{\"from\":3,\"to\":4,\"caption\":\"e\",\"route\":[[135.0,22.0],[140.0,22.5],[175.0,22.0]]}]}"
    "\n";

TEST(LayoutReader, RestoresPositionsSizesAndRoutes) {
    const ReadFile file(kLayout);
    ASSERT_TRUE(file.is_read) << file.error;
    EXPECT_TRUE(file.report.has_layout);
    EXPECT_EQ(Tree(file), "all{parse} check");
    EXPECT_EQ(Edges(file), "parse>check:e");
    const Node parse = file.Find("parse");
    EXPECT_EQ(parse.GetTag(), 3);
    EXPECT_EQ(parse.GetPosition(), (point<double>{35.0, 12.25}));
    EXPECT_EQ(parse.GetSize(), (size<double>{100.0, 20.0}));
    EXPECT_EQ(file.graph->GetRoot().GetSize(), (size<double>{270.5, 44.0}));
    const std::vector<point<double>> route = {{135.0, 22.0}, {140.0, 22.5}, {175.0, 22.0}};
    EXPECT_EQ(parse.GetEdgesOut().GetItem(0).GetRoute(), route);
}

TEST(LayoutReader, LeavesNothingToBeLaidOut) {
    const ReadFile file(kLayout);
    EXPECT_FALSE(file.graph->RecalculateLayout(nullptr));
    EXPECT_EQ(file.Find("check").GetPosition(), (point<double>{175.0, 12.0}));
}

TEST(LayoutReader, ALaterLayoutGoesOnFromThere) {
    const ReadFile file(kLayout);
    file.graph->SetDefaultLayout(StableLayout::Create());
    Hide(file.Find("check"));
    file.graph->GetRoot().UpdateLayout();
    EXPECT_TRUE(file.graph->RecalculateLayout(nullptr));
    const Node parse = file.Find("parse");
    EXPECT_GE(parse.GetPosition().x, file.Find("all").GetPosition().x);
    Show(file.Find("check"));
    file.graph->GetRoot().UpdateLayout();
    EXPECT_TRUE(file.graph->RecalculateLayout(nullptr));
    const std::vector<point<double>> route = parse.GetEdgesOut().GetItem(0).GetRoute();
    ASSERT_GE(route.size(), 2U);
    EXPECT_EQ(route.front().x, parse.GetPosition().x + parse.GetSize().cx);
}

TEST(LayoutReader, KeepsHiddenNodesHidden) {
    std::string text = kLayout;
    text.replace(text.rfind("\"hidden\":false"), 14, "\"hidden\":true");
    const ReadFile file(text);
    EXPECT_TRUE(file.report.has_layout);
    EXPECT_TRUE(IsFlagSet(file.Find("check"), NodeHidden));
    EXPECT_FALSE(IsFlagSet(file.Find("parse"), NodeHidden));

    const ReadFile all(text, "g", {.show_all = true});
    EXPECT_FALSE(IsFlagSet(all.Find("check"), NodeHidden));
    EXPECT_FALSE(all.report.has_layout) << "the positions of hidden nodes mean nothing";
    EXPECT_TRUE(all.graph->RecalculateLayout(nullptr));
}

TEST(LayoutReader, ALayoutThatLacksAPlaceIsNone) {
    for (const std::string part : {",\"position\":[175.0,12.0]", ",\"size\":[100.0,20.0]",
                                   ",\"route\":[[135.0,22.0],[140.0,22.5],[175.0,22.0]]",
                                   "\"root\":{\"position\":[0.0,0.0],\"size\":[270.5,44.0]},\n"}) {
        std::string text = kLayout;
        text.erase(text.find(part), part.size());
        const ReadFile file(text);
        EXPECT_TRUE(file.is_read) << file.error;
        EXPECT_FALSE(file.report.has_layout) << part;
        EXPECT_EQ(Tree(file), "all{parse} check");
        EXPECT_TRUE(file.graph->RecalculateLayout(nullptr));
    }
}

TEST(LayoutReader, RefusesWhatIsNoPlace) {
    const auto error_with = [](const std::string& part, const std::string& other) {
        std::string text = kLayout;
        text.replace(text.find(part), part.size(), other);
        return ReadFile(text).error;
    };
    EXPECT_EQ(error_with("[35.0,12.25]", "[35.0]"), "g:3: a point or a size is no pair of numbers");
    EXPECT_EQ(error_with("[100.0,20.0]", "[-1,20]"), "g:3: a size is less than zero");
    EXPECT_EQ(error_with("[140.0,22.5]", "[140.0,null]"),
              "g:7: a point or a size is no pair of numbers");
    EXPECT_EQ(error_with("\"to\":4", "\"to\":5"),
              "g:7: an edge names the node \"5\", which is not declared");
    EXPECT_EQ(error_with("\"owner\":9", "\"owner\":8"),
              "g:3: the node \"3\" names \"8\" as its owner, which is not declared");
}

}  // namespace
}  // namespace nodeline::formats
