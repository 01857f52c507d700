#include <apps/viewer/load_job.h>
#include <gtest/gtest.h>
#include <viewer_parts/graph_text.h>
#include <viewer_parts/waiting.h>

#include <QTemporaryDir>
#include <memory>
#include <string>

namespace nodeline::app {
namespace {

using namespace test;

const char* const kText = R"(a text
[nodes]
1 "first" 0 0
2 "second" 0 0
3 "third" 0 0
[edges]
1 2 ""
1 3 ""
)";

class LoadJobTest : public testing::Test {
protected:
    void Start(const std::string& text, bool is_laid_out = true) {
        ASSERT_TRUE(Write(path, text));
        LoadOptions options;
        options.path = path;
        options.is_laid_out = is_laid_out;
        job = std::make_unique<LoadJob>(options);
        QObject::connect(job.get(), &LoadJob::finished, [this] { ++finished; });
        job->start();
    }
    [[nodiscard]] bool End() {
        return WaitFor([this] { return finished > 0; });
    }

    QTemporaryDir folder;
    QString path = folder.filePath("graph.txt");
    std::unique_ptr<LoadJob> job;
    int finished = 0;
};

TEST_F(LoadJobTest, AGraphComesLaidOut) {
    Start(kText);
    ASSERT_TRUE(End());
    EXPECT_EQ(job->failure(), QString());
    EXPECT_EQ(AllNodes(job->graph()).size(), 3u);
    EXPECT_GT(job->graph()->GetRoot().GetSize().cx, 0.0);
    EXPECT_FALSE(job->graph()->RecalculateLayout(nullptr));
}

TEST_F(LoadJobTest, AGraphToCompareIsNotLaidOut) {
    Start(kText, false);
    ASSERT_TRUE(End());
    EXPECT_EQ(AllNodes(job->graph()).size(), 3u);
    EXPECT_EQ(Find(job->graph(), "first").GetSize().cx, 0.0);
}

TEST_F(LoadJobTest, AGraphIsMeasuredWhenItsJobHasGone) {
    Start(kText);
    ASSERT_TRUE(End());
    const graph_ptr2<Graph> graph = job->graph();
    job.reset();
    Node added = graph->GetRoot().AddNode();
    added.SetCaption("added");
    graph->GetRoot().UpdateLayout();
    EXPECT_TRUE(graph->RecalculateLayout(nullptr));
    EXPECT_GT(added.GetSize().cx, 0.0);
}

TEST_F(LoadJobTest, ACancelledJobEndsAndSaysSo) {
    Start(LargeText(200000));
    ASSERT_TRUE(WaitFor([this] { return job->phase() != u"Reading 0 nodes…"; }));
    job->cancel();
    EXPECT_EQ(job->phase(), u"Cancelling…");
    ASSERT_TRUE(End());
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(job->failure(), u"Loading was cancelled.");
}

TEST_F(LoadJobTest, AJobIsCancelledWhileItLaysOut) {
    Start(LargeText(60000));
    ASSERT_TRUE(WaitFor([this] { return job->phase().startsWith(u"Laying out"); }));
    job->cancel();
    ASSERT_TRUE(End());
    EXPECT_EQ(job->failure(), u"Loading was cancelled.");
}

TEST_F(LoadJobTest, AJobThatGoesDuringItsWorkWaitsForItsThread) {
    Start(LargeText(200000));
    job.reset();
    Rest(20);
    EXPECT_EQ(finished, 0);
}

TEST_F(LoadJobTest, APhaseTellsHowManyNodesThereAre) {
    Start(LargeText(1500));
    EXPECT_NE(job->phase(), QString());
    ASSERT_TRUE(End());
    EXPECT_EQ(job->phase(), QObject::tr("Laying out %L1 nodes…").arg(1500));
}

TEST_F(LoadJobTest, EitherLayoutIsSet) {
    ASSERT_TRUE(Write(path, kText));
    const auto is_stable = [this](LayoutKind kind) {
        LoadOptions options;
        options.path = path;
        options.layout = kind;
        LoadJob one(options);
        return dynamic_cast<StableLayout*>(one.graph()->GetRoot().GetLayout().get()) != nullptr;
    };
    EXPECT_TRUE(is_stable(LayoutKind::kStable));
    EXPECT_FALSE(is_stable(LayoutKind::kInc));
}

}  // namespace
}  // namespace nodeline::app
