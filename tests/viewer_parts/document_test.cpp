#include <apps/viewer/document.h>
#include <apps/viewer/history.h>
#include <apps/viewer/view_edits.h>
#include <gtest/gtest.h>
#include <qt/events.h>
#include <viewer_parts/graph_text.h>
#include <viewer_parts/waiting.h>

#include <QStringList>
#include <QTemporaryDir>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace nodeline::app {
namespace {

using namespace test;
using Captions = std::vector<std::string>;

const char* const kText = R"(a text
[nodes]
1 "first" 0 0
2 "second" 0 0
3 "third" 0 0
[edges]
1 2 ""
1 3 ""
)";
const char* const kMore = R"(a text
[nodes]
1 "first" 0 0
2 "second" 0 0
3 "third" 0 0
4 "fourth" 0 0
[edges]
1 2 ""
1 3 ""
3 4 ""
)";
const char* const kBroken = "a text\n[nodes]\n1 \"first\" 0 0\n[edges]\n1 99 \"\"\n";

class DocumentTest : public testing::Test {
protected:
    void SetUp() override {
        widget.viewer()->ScrollbarsEnable(false);
        widget.resize(600, 400);
        widget.show();
        Make();
    }

    void Make() {
        document = std::make_unique<Document>(&widget);
        QObject::connect(document.get(), &Document::opened, [this] {
            ++opened;
            history.start();
        });
        QObject::connect(document.get(), &Document::reloaded, [this](const MergeResult& result) {
            ++reloaded;
            merged = result;
            history.adopt();
        });
        QObject::connect(document.get(), &Document::failed,
                         [this](const QString& text) { failures << text; });
        QObject::connect(document.get(), &Document::warned,
                         [this](const QString& text) { warnings << text; });
        QObject::connect(document.get(), &Document::loadingStarted, [this] { ++started; });
        QObject::connect(document.get(), &Document::loadingEnded, [this] { ++ended; });
    }
    // Waits for what comes of it.
    void Open(const QString& file) {
        const int outcomes = opened + static_cast<int>(failures.size());
        document->open(file);
        ASSERT_TRUE(WaitFor([&] { return opened + failures.size() > outcomes; }));
    }
    void OpenText(const std::string& text) {
        ASSERT_TRUE(Write(path, text));
        Open(path);
    }
    [[nodiscard]] bool IsReloaded(int times) {
        return WaitFor([this, times] { return reloaded >= times; });
    }
    [[nodiscard]] graph_ptr2<Graph> TheGraph() const { return widget.viewer()->GetGraph(); }
    [[nodiscard]] Captions Shown() const { return ShownCaptions(TheGraph()); }
    [[nodiscard]] Node Named(const std::string& caption) const { return Find(TheGraph(), caption); }
    // As programs do that write a new file first.
    [[nodiscard]] bool Replace(const std::string& text) const {
        const QString made = folder.filePath("made");
        return Write(made, text) &&
               std::rename(made.toUtf8().constData(), path.toUtf8().constData()) == 0;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("graph.txt");
    qt::GraphWidget widget;
    History history{&widget};
    std::unique_ptr<Document> document;
    int started = 0;
    int ended = 0;
    int opened = 0;
    int reloaded = 0;
    MergeResult merged;
    QStringList failures;
    QStringList warnings;
};

const Captions kThree = {"first", "second", "third"};
const Captions kFour = {"first", "fourth", "second", "third"};

TEST_F(DocumentTest, AGoodFileIsShown) {
    EXPECT_EQ(document->path(), QString());
    OpenText(kText);
    EXPECT_EQ(document->path(), path);
    EXPECT_EQ(Shown(), kThree);
    EXPECT_EQ(document->loadingPath(), QString());
    EXPECT_EQ(document->phase(), QString());
    EXPECT_EQ(started, 1);
    EXPECT_EQ(ended, 1);
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(DocumentTest, ABrokenFileIsToldWithItsLineAndChangesNothing) {
    OpenText(kText);
    const QString broken = folder.filePath("broken.txt");
    ASSERT_TRUE(Write(broken, kBroken));
    Open(broken);
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.front().startsWith(broken + ":5: ")) << failures.front().toStdString();
    EXPECT_EQ(document->path(), path);
    EXPECT_EQ(Shown(), kThree);
    // The first file is still the one that is followed.
    ASSERT_TRUE(Write(path, kMore));
    ASSERT_TRUE(IsReloaded(1));
    EXPECT_EQ(Shown(), kFour);
}

TEST_F(DocumentTest, AMissingFileAndAFolderAreTold) {
    const QString missing = folder.filePath("missing.txt");
    Open(missing);
    Open(folder.path());
    ASSERT_EQ(failures.size(), 2);
    EXPECT_TRUE(failures[0].startsWith(missing + ": cannot be opened: "));
    EXPECT_TRUE(failures[1].startsWith(folder.path() + ": cannot be "))
        << failures[1].toStdString();
    EXPECT_EQ(document->path(), QString());
    EXPECT_EQ(opened, 0);
}

TEST_F(DocumentTest, WarningsAreToldOnceTheGraphIsShown) {
    int opened_before = -1;
    QObject::connect(document.get(), &Document::warned, [&] { opened_before = opened; });
    OpenText("a text\n[nodes]\n1 \"first\" 0 0\n1 \"again\" 0 0\n");
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.front().startsWith(path + ":4: warning: "));
    EXPECT_EQ(opened_before, 1);
}

TEST_F(DocumentTest, CancellingLeavesWhatIsShown) {
    OpenText(kText);
    const QString large = folder.filePath("large.txt");
    ASSERT_TRUE(Write(large, LargeText(200000)));
    document->open(large);
    EXPECT_EQ(document->loadingPath(), large);
    ASSERT_TRUE(WaitFor([this] { return document->phase() != u"Reading 0 nodes…"; }));
    document->cancel();
    EXPECT_EQ(document->loadingPath(), QString());
    EXPECT_EQ(ended, 2);
    Rest(300);
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(failures.isEmpty());
    EXPECT_EQ(document->path(), path);
    EXPECT_EQ(Shown(), kThree);
    document->cancel();
    EXPECT_EQ(ended, 2) << "nothing was being loaded";
}

TEST_F(DocumentTest, ASecondFileTakesThePlaceOfOneThatIsBeingLoaded) {
    const QString large = folder.filePath("large.txt");
    ASSERT_TRUE(Write(large, LargeText(200000)));
    document->open(large);
    OpenText(kText);
    Rest(300);
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(started, 2);
    EXPECT_EQ(ended, 2);
    EXPECT_EQ(document->path(), path);
    EXPECT_EQ(Shown(), kThree);
}

TEST_F(DocumentTest, AChangeOfTheShownFileLeavesTheLoadingOfAnotherAlone) {
    OpenText(kText);
    const QString large = folder.filePath("large.txt");
    ASSERT_TRUE(Write(large, LargeText(60000)));
    document->open(large);
    ASSERT_TRUE(Write(path, kMore));
    ASSERT_TRUE(WaitFor([this] { return opened == 2; }));
    EXPECT_EQ(document->path(), large);
    EXPECT_EQ(reloaded, 0);
}

TEST_F(DocumentTest, AChangeWhileTheFileIsLoadedIsNotLost) {
    ASSERT_TRUE(Write(path, LargeText(5000)));
    document->open(path);
    ASSERT_TRUE(WaitFor([this] { return document->phase() != u"Reading 0 nodes…"; }));
    ASSERT_TRUE(Write(path, kText));
    ASSERT_TRUE(WaitFor([this] { return reloaded > 0; }));
    EXPECT_EQ(Shown(), kThree);
}

TEST_F(DocumentTest, AChangeOfTheShownFileIsSeenAfterAnotherCouldNotBeLoaded) {
    OpenText(kText);
    const QString large = folder.filePath("large.txt");
    ASSERT_TRUE(Write(large, LargeText(200000)));
    document->open(large);
    ASSERT_TRUE(Write(path, kMore));
    Rest(300);
    document->cancel();
    ASSERT_TRUE(IsReloaded(1));
    EXPECT_EQ(Shown(), kFour);
}

TEST_F(DocumentTest, AReloadKeepsWhatIsHiddenTheViewAndTheHistory) {
    OpenText(kText);
    const Node second = Named("second");
    widget.change([&] { HideNode(second); });
    widget.zoomTo(1.5);
    widget.viewer()->SetStartX(17.0);
    const point<double> start{widget.viewer()->GetStartX(), widget.viewer()->GetStartY()};
    ASSERT_TRUE(Write(path, kMore));
    ASSERT_TRUE(IsReloaded(1));
    EXPECT_EQ(merged.added, 1);
    EXPECT_EQ(Shown(), (Captions{"first", "fourth", "third"}));
    EXPECT_EQ(widget.viewer()->GetScale(), 1.5);
    EXPECT_EQ(widget.viewer()->GetStartX(), start.x);
    EXPECT_EQ(widget.viewer()->GetStartY(), start.y);
    ASSERT_TRUE(history.stack()->canUndo());
    history.stack()->undo();
    EXPECT_EQ(Shown(), kFour);
    EXPECT_EQ(opened, 1);
}

TEST_F(DocumentTest, AReloadByHandReadsAlsoWhatHasNotChanged) {
    document->reload();
    EXPECT_EQ(started, 0) << "there is no file yet";
    OpenText(kText);
    document->reload();
    ASSERT_TRUE(IsReloaded(1));
    EXPECT_TRUE(merged.IsEmpty());
    EXPECT_EQ(Shown(), kThree);
}

TEST_F(DocumentTest, AFileThatIsReplacedIsReadAgainAndFollowedFurther) {
    OpenText(kText);
    ASSERT_TRUE(Replace(kMore));
    ASSERT_TRUE(IsReloaded(1));
    EXPECT_EQ(Shown(), kFour);
    ASSERT_TRUE(Write(path, kText));
    ASSERT_TRUE(IsReloaded(2));
    EXPECT_EQ(Shown(), kThree);
}

TEST_F(DocumentTest, AFileThatGoesIsToldOnceAndComesBack) {
    OpenText(kText);
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(WaitFor([this] { return !warnings.isEmpty(); }));
    EXPECT_EQ(warnings.front(), path + " has gone; what it held is still shown");
    ASSERT_TRUE(Write(folder.filePath("unrelated.txt"), "x"));
    Rest(400);
    EXPECT_EQ(warnings.size(), 1);
    EXPECT_EQ(Shown(), kThree);
    ASSERT_TRUE(Write(path, kMore));
    ASSERT_TRUE(IsReloaded(1));
    EXPECT_EQ(Shown(), kFour);
}

TEST_F(DocumentTest, AFileThatComesBackIsFoundAlsoAfterAVainReload) {
    OpenText(kText);
    ASSERT_TRUE(QFile::remove(path));
    document->reload();
    ASSERT_TRUE(WaitFor([this] { return failures.size() == 1; }));
    Rest(400);
    ASSERT_TRUE(Write(path, kMore));
    ASSERT_TRUE(IsReloaded(1));
    EXPECT_EQ(Shown(), kFour);
    EXPECT_EQ(failures.size(), 1);
}

TEST_F(DocumentTest, TwoQuickChangesEndWithTheLast) {
    OpenText(kText);
    ASSERT_TRUE(Write(path, "a text\n[nodes]\n1 \"first\" 0 0\n"));
    Rest(20);
    ASSERT_TRUE(Write(path, kMore));
    ASSERT_TRUE(WaitFor([this] { return Shown() == kFour; }));
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(DocumentTest, ABrokenChangeIsToldOnceAndAGoodOneIsTakenThen) {
    for (const bool is_replaced : {false, true}) {
        SCOPED_TRACE(is_replaced);
        failures.clear();
        reloaded = 0;
        OpenText(kText);
        ASSERT_TRUE(is_replaced ? Replace(kBroken) : Write(path, kBroken));
        ASSERT_TRUE(WaitFor([this] { return !failures.isEmpty(); }));
        EXPECT_TRUE(failures.front().startsWith(path + ":5: "));
        EXPECT_EQ(Shown(), kThree);
        // Others in the folder are none of its business.
        ASSERT_TRUE(Write(folder.filePath(is_replaced ? "one.txt" : "two.txt"), "x"));
        Rest(400);
        EXPECT_EQ(failures.size(), 1);
        ASSERT_TRUE(Write(path, kMore));
        ASSERT_TRUE(IsReloaded(1));
        EXPECT_EQ(Shown(), kFour);
    }
}

TEST_F(DocumentTest, ACancelledReloadIsNotBegunAgain) {
    OpenText(kText);
    ASSERT_TRUE(Write(path, LargeText(200000)));
    ASSERT_TRUE(WaitFor([this] { return document->loadingPath() == path; }));
    document->cancel();
    Rest(500);
    EXPECT_EQ(document->loadingPath(), QString());
    EXPECT_EQ(reloaded, 0);
    EXPECT_EQ(Shown(), kThree);
}

TEST_F(DocumentTest, FilesInsideTheProgramAreShown) {
    Open(":/examples/http-parser.txt");
    EXPECT_EQ(opened, 1);
    EXPECT_GT(Shown().size(), 10u);
    document->reload();
    ASSERT_TRUE(IsReloaded(1));
    EXPECT_TRUE(merged.IsEmpty());
}

TEST_F(DocumentTest, ADocumentMayGoWhileItLoads) {
    ASSERT_TRUE(Write(path, LargeText(200000)));
    document->open(path);
    document.reset();
    Rest(50);
    EXPECT_EQ(opened, 0);
    EXPECT_TRUE(failures.isEmpty());
}

}  // namespace
}  // namespace nodeline::app
