#include <apps/viewer/find_panel.h>
#include <apps/viewer/hit_model.h>
#include <gtest/gtest.h>
#include <nodeline/ops/graph_ops.h>
#include <qt/events.h>

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QStringList>
#include <string>

namespace nodeline::app {
namespace {

class FindPanelTest : public testing::Test {
protected:
    void SetUp() override {
        beta.SetCaption("beta");
        alpha.SetCaption("alpha");
        gamma.SetCaption("gamma");
        QObject::connect(&panel, &FindPanel::nodeChosen,
                         [this](const Node& node) { chosen << node.GetCaption().c_str(); });
        QObject::connect(&panel, &FindPanel::closed, [this] { ++closed; });
        panel.setGraph(graph);
        panel.resize(300, 400);
        panel.show();
        test::Settle();
    }

    void Type(const QString& text) { line->setText(text); }
    void Press(QWidget* widget, int key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        test::Key(widget, QEvent::KeyPress, key, keys);
    }
    [[nodiscard]] QStringList Rows() const {
        QStringList rows;
        for (int i = 0; i < list->model()->rowCount(); ++i) {
            rows << list->model()->index(i, 0).data().toString();
        }
        return rows;
    }
    [[nodiscard]] QString Current() const { return list->currentIndex().data().toString(); }

    graph_ptr2<Graph> graph{new Graph, true};
    Node beta = graph->GetRoot().AddNode();
    Node alpha = beta.AddNode();
    Node gamma = graph->GetRoot().AddNode();
    FindPanel panel;
    QLineEdit* line = panel.findChild<QLineEdit*>();
    QListView* list = panel.findChild<QListView*>();
    QLabel* count = panel.findChild<QLabel*>();
    QStringList chosen;
    int closed = 0;
};

TEST_F(FindPanelTest, ListsHitsWhileOneTypes) {
    Type("a");
    EXPECT_EQ(Rows(), QStringList({"alpha", "beta", "gamma"}));
    Type("al");
    EXPECT_EQ(Rows(), QStringList({"alpha"}));
    Type("");
    EXPECT_EQ(Rows(), QStringList({"alpha", "beta", "gamma"}));
}

TEST_F(FindPanelTest, CountsHitsAndHiddenOnes) {
    EXPECT_EQ(count->text(), "3 nodes");
    Type("a");
    EXPECT_EQ(count->text(), "3 hits");
    Hide(beta);
    panel.refresh();
    EXPECT_EQ(count->text(), "3 hits, 2 hidden");
    Type("gam");
    EXPECT_EQ(count->text(), "1 hit");
    Type("nothing like it");
    EXPECT_EQ(count->text(), "no hits");
}

TEST_F(FindPanelTest, RefreshKeepsTheCurrentRow) {
    Type("a");
    Press(line, Qt::Key_Down);
    ASSERT_EQ(Current(), "beta");
    Hide(beta);
    panel.refresh();
    EXPECT_EQ(Current(), "beta");
    EXPECT_TRUE(list->currentIndex().data(HitModel::kHiddenRole).toBool());
}

TEST_F(FindPanelTest, FirstHitIsCurrentAndEnterChoosesIt) {
    Type("a");
    EXPECT_EQ(Current(), "alpha");
    Press(line, Qt::Key_Return);
    EXPECT_EQ(chosen, QStringList({"alpha"}));
    EXPECT_EQ(closed, 0);
}

TEST_F(FindPanelTest, DownAndUpInTheLineMoveInTheList) {
    Type("a");
    Press(line, Qt::Key_Down);
    Press(line, Qt::Key_Down);
    EXPECT_EQ(Current(), "gamma");
    Press(line, Qt::Key_Down);
    EXPECT_EQ(Current(), "gamma") << "the last one";
    Press(line, Qt::Key_Up);
    EXPECT_EQ(Current(), "beta");
    Press(line, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(chosen, QStringList({"beta"}));
}

TEST_F(FindPanelTest, EnterWithoutHitsChoosesNothing) {
    Type("nothing like it");
    Press(line, Qt::Key_Return);
    EXPECT_EQ(chosen, QStringList());
}

TEST_F(FindPanelTest, EscapeClosesFromTheLineAndFromTheList) {
    Press(line, Qt::Key_Escape);
    EXPECT_EQ(closed, 1);
    Press(list, Qt::Key_Escape);
    EXPECT_EQ(closed, 2);
}

TEST_F(FindPanelTest, EnterInTheListChoosesOnce) {
    Type("a");
    Press(list, Qt::Key_Down);
    Press(list, Qt::Key_Return);
    EXPECT_EQ(chosen, QStringList({"beta"}));
}

TEST_F(FindPanelTest, KeysWithModifiersAreLeftToOthers) {
    Type("a");
    Press(line, Qt::Key_Return, Qt::ControlModifier);
    Press(line, Qt::Key_Escape, Qt::ShiftModifier);
    EXPECT_EQ(chosen, QStringList());
    EXPECT_EQ(closed, 0);
}

TEST_F(FindPanelTest, ShortcutsOfTheWindowDoNotGetItsKeys) {
    EXPECT_TRUE(test::Key(line, QEvent::ShortcutOverride, Qt::Key_Escape));
    EXPECT_TRUE(test::Key(line, QEvent::ShortcutOverride, Qt::Key_Down));
    EXPECT_EQ(closed, 0) << "only asked for";
}

TEST_F(FindPanelTest, ClickOnARowChoosesIt) {
    Type("a");
    test::Settle();
    const QRect row = list->visualRect(list->model()->index(2, 0));
    test::Click(list->viewport(), row.center());
    EXPECT_EQ(chosen, QStringList({"gamma"}));
}

TEST_F(FindPanelTest, ActivateSelectsWhatIsTyped) {
    Type("alp");
    line->deselect();
    panel.activate();
    EXPECT_EQ(line->selectedText(), "alp");
}

TEST_F(FindPanelTest, AnotherGraphIsSearchedForTheSameText) {
    Type("al");
    const graph_ptr2<Graph> other(new Graph, true);
    other->GetRoot().AddNode().SetCaption("also");
    panel.setGraph(other);
    EXPECT_EQ(Rows(), QStringList({"also"}));
    EXPECT_EQ(Current(), "also");
    panel.setGraph(graph_ptr2<Graph>());
    EXPECT_EQ(Rows(), QStringList());
}

TEST_F(FindPanelTest, TooltipTellsAllOfACaptionAndItsOwners) {
    const std::string caption(300, 'x');
    alpha.SetCaption(caption);
    Hide(beta);
    panel.setGraph(graph);
    Type("xxx");
    const QString tip = list->model()->index(0, 0).data(Qt::ToolTipRole).toString();
    EXPECT_EQ(tip, QString::fromStdString(caption) + "\nin beta\nhidden");
}

TEST_F(FindPanelTest, LongCaptionsMakeNoRowWiderThanTheList) {
    alpha.SetCaption(std::string(3000, 'x'));
    panel.setGraph(graph);
    Type("xxx");
    test::Settle();
    EXPECT_LE(list->visualRect(list->model()->index(0, 0)).width(), list->viewport()->width());
}

TEST_F(FindPanelTest, NoMoreThanAThousandRowsAreListedAndTheLineCountsAll) {
    const graph_ptr2<Graph> large(new Graph, true);
    for (int i = 0; i < 1500; ++i) large->GetRoot().AddNode().SetCaption("n" + std::to_string(i));
    panel.setGraph(large);
    Type("n");
    EXPECT_EQ(list->model()->rowCount(), FindPanel::kMaxRows);
    EXPECT_EQ(QString(count->text()).remove(',').remove('.'),
              "1500 hits the first 1000 are listed");
}

TEST_F(FindPanelTest, SlotOfItsSignalMayDestroyIt) {
    auto* const own = new FindPanel;
    own->setGraph(graph);
    own->findChild<QLineEdit*>()->setText("alpha");
    QObject::connect(own, &FindPanel::closed, [own] { own->deleteLater(); });
    Press(own->findChild<QLineEdit*>(), Qt::Key_Escape);
    QPointer<FindPanel> watch(own);
    QApplication::sendPostedEvents(own, QEvent::DeferredDelete);
    EXPECT_TRUE(watch.isNull());
}

}  // namespace
}  // namespace nodeline::app
