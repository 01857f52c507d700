#include <apps/viewer/start_page.h>
#include <apps/viewer/theme.h>
#include <apps/viewer/tile_button.h>
#include <gtest/gtest.h>
#include <qt/events.h>
#include <viewer_parts/contrast.h>

#include <QImage>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>

namespace nodeline::app {
namespace {

class StartPageTest : public testing::Test {
protected:
    void SetUp() override {
        QObject::connect(&page, &StartPage::openRequested, [this] { ++opened; });
        QObject::connect(&page, &StartPage::fileChosen,
                         [this](const QString& path) { chosen << path; });
        page.setExamples(
            {{"First", "The first one", ":/a.txt"}, {"Second", "The second one", ":/b.txt"}});
        ShowAt(900, 700);
    }
    void TearDown() override { ApplyAppearance(Appearance::kSystem); }

    void ShowAt(int width, int height) {
        page.resize(width, height);
        page.show();
        test::Settle();
    }
    // The one in view with that title; null if there is none.
    [[nodiscard]] TileButton* Button(const QString& title) const {
        for (TileButton* const button : page.findChildren<TileButton*>()) {
            if (button->text() == title && button->isVisible()) return button;
        }
        return nullptr;
    }
    [[nodiscard]] QLabel* Label(const QString& text) const {
        for (QLabel* const label : page.findChildren<QLabel*>()) {
            if (label->text() == text && label->isVisible()) return label;
        }
        return nullptr;
    }
    [[nodiscard]] QScrollArea* Scroll() const { return page.findChild<QScrollArea*>(); }

    StartPage page;
    int opened = 0;
    QStringList chosen;
};

TEST_F(StartPageTest, PrimaryButtonAsksForAFile) {
    TileButton* const open = Button(QStringLiteral("Open a graph\u2026"));
    ASSERT_NE(open, nullptr);
    test::Click(open, open->rect().center());
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(chosen, QStringList());
}

TEST_F(StartPageTest, ExampleChoosesItsFile) {
    test::Click(Button("Second"), QPoint(20, 20));
    EXPECT_EQ(chosen, QStringList({":/b.txt"}));
    EXPECT_EQ(opened, 0);
}

TEST_F(StartPageTest, SpaceKeyPressesAnExample) {
    test::Key(Button("First"), QEvent::KeyPress, Qt::Key_Space);
    test::Key(Button("First"), QEvent::KeyRelease, Qt::Key_Space);
    EXPECT_EQ(chosen, QStringList({":/a.txt"}));
}

TEST_F(StartPageTest, RecentFilesAreHiddenWhileThereAreNone) {
    EXPECT_EQ(Label("Recent files"), nullptr);
    page.setRecentFiles({"/some/folder/graph.txt"});
    test::Settle();
    EXPECT_NE(Label("Recent files"), nullptr);
    page.setRecentFiles({});
    test::Settle();
    EXPECT_EQ(Label("Recent files"), nullptr);
    EXPECT_EQ(Button("graph.txt"), nullptr);
}

TEST_F(StartPageTest, RecentFileIsChosenByItsFullPath) {
    page.setRecentFiles({"/some/folder/graph.txt", "/other/graph 2.txt"});
    test::Settle();
    ASSERT_NE(Button("graph 2.txt"), nullptr);
    test::Click(Button("graph 2.txt"), QPoint(20, 8));
    EXPECT_EQ(chosen, QStringList({"/other/graph 2.txt"}));
}

TEST_F(StartPageTest, OnlyTheLatestRecentFilesAreShown) {
    QStringList paths;
    for (int i = 0; i < 9; ++i) paths << QStringLiteral("/f/%1.txt").arg(i);
    page.setRecentFiles(paths);
    test::Settle();
    EXPECT_NE(Button("4.txt"), nullptr);
    EXPECT_EQ(Button("5.txt"), nullptr);
}

TEST_F(StartPageTest, SlotMayReplaceTheListsThatItWasCalledFrom) {
    page.setRecentFiles({"/f/a.txt"});
    test::Settle();
    QObject::connect(&page, &StartPage::fileChosen, [this] {
        page.setRecentFiles({"/f/b.txt"});
        page.setExamples({});
    });
    test::Click(Button("a.txt"), QPoint(20, 8));
    test::Settle();
    EXPECT_NE(Button("b.txt"), nullptr);
    EXPECT_EQ(Button("a.txt"), nullptr);
    EXPECT_EQ(Label("Examples"), nullptr);
}

TEST_F(StartPageTest, SentenceNamesExamplesOnlyWhereThereAreAny) {
    EXPECT_NE(Label("Open a graph file, or begin with one of the examples below."), nullptr);
    page.setExamples({});
    test::Settle();
    EXPECT_NE(Label("Open a graph file to see it drawn."), nullptr);
}

TEST_F(StartPageTest, ExamplesStandSideBySideWhereThereIsRoom) {
    EXPECT_EQ(Button("First")->y(), Button("Second")->y());
    ShowAt(500, 400);
    EXPECT_LT(Button("First")->geometry().bottom(), Button("Second")->y());
    EXPECT_EQ(Button("First")->x(), Button("Second")->x());
    ShowAt(1600, 1000);
    EXPECT_EQ(Button("First")->y(), Button("Second")->y());
}

TEST_F(StartPageTest, ColumnStaysInTheMiddleAndIsNotTooWide) {
    for (const int width : {500, 900, 1600}) {
        ShowAt(width, 1000);
        const QWidget* const column = Button("First")->parentWidget();
        const QPoint left = column->mapTo(&page, QPoint(0, 0));
        EXPECT_LE(column->width(), 760);
        EXPECT_GE(left.x(), 20);
        EXPECT_NEAR(left.x(), page.width() - left.x() - column->width(), 20);
    }
}

TEST_F(StartPageTest, NothingIsWiderThanASmallPageAndAllCanBeScrolledTo) {
    page.setExamples(BuiltInExamples());
    page.setRecentFiles({"/a/" + QString(300, 'x') + "/" + QString(200, 'y') + ".txt"});
    ShowAt(500, 400);
    const QWidget* const ground = Scroll()->widget();
    EXPECT_LE(ground->width(), Scroll()->viewport()->width());
    EXPECT_EQ(Scroll()->verticalScrollBar()->maximum(),
              ground->height() - Scroll()->viewport()->height());
    EXPECT_GT(Scroll()->verticalScrollBar()->maximum(), 0);
}

TEST_F(StartPageTest, ALargePageNeedsNoScrolling) {
    page.setExamples(BuiltInExamples());
    page.setRecentFiles({"/a.txt", "/b.txt", "/c.txt", "/d.txt", "/e.txt"});
    ShowAt(1600, 1000);
    EXPECT_EQ(Scroll()->verticalScrollBar()->maximum(), 0);
}

TEST_F(StartPageTest, TextsFollowTheAppearanceWhileTheyAreShown) {
    for (const Appearance appearance : {Appearance::kDark, Appearance::kLight, Appearance::kDark}) {
        ApplyAppearance(appearance);
        test::Settle();
        const QLabel* const quiet = Label("or drop a file here");
        ASSERT_NE(quiet, nullptr);
        const QColor ground = page.palette().color(QPalette::Window);
        EXPECT_GE(test::Contrast(quiet->palette().color(QPalette::WindowText), ground), 4.5);
        const QImage image = page.grab().toImage();
        EXPECT_EQ(image.pixelColor(2, 2), ground);
    }
}

TEST_F(StartPageTest, ButtonLightsUpUnderThePointer) {
    TileButton* const first = Button("First");
    const QColor before = first->grab().toImage().pixelColor(30, 4);
    const QPointF at(30.0, 4.0);
    first->setAttribute(Qt::WA_UnderMouse, true);
    test::Send(first, QEnterEvent(at, at, at));
    EXPECT_NE(first->grab().toImage().pixelColor(30, 4), before);
}

}  // namespace
}  // namespace nodeline::app
