#include <viewer_parts/main_window_stage.h>

#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QToolBar>
#include <vector>

// Which actions there are, where they are found, and when they can be used.

namespace nodeline::app {
namespace {

using namespace test;

class MainWindowActionsTest : public MainWindowTest {
protected:
    [[nodiscard]] static std::vector<Command> AllCommands() {
        std::vector<Command> commands;
        for (int i = 0; i < static_cast<int>(Command::kCount); ++i) {
            commands.push_back(static_cast<Command>(i));
        }
        return commands;
    }
    // What the menus hold, and their menus.
    [[nodiscard]] QSet<QAction*> InMenus() const {
        QSet<QAction*> found;
        QList<QAction*> pending = window->menuBar()->actions();
        while (!pending.isEmpty()) {
            QAction* const action = pending.takeLast();
            found.insert(action);
            if (action->menu() != nullptr) pending += action->menu()->actions();
        }
        return found;
    }
    [[nodiscard]] std::vector<Command> Enabled() const {
        std::vector<Command> commands;
        for (const Command command : AllCommands()) {
            if (Action(command)->isEnabled()) commands.push_back(command);
        }
        return commands;
    }
    void ExpectEnabled(std::initializer_list<Command> commands, bool is_enabled) const {
        for (const Command command : commands) {
            EXPECT_EQ(Action(command)->isEnabled(), is_enabled)
                << Action(command)->text().toStdString();
        }
    }
};

TEST_F(MainWindowActionsTest, EveryCommandHasWordsKeysAndAnEntryInAMenu) {
    const QSet<QAction*> in_menus = InMenus();
    for (const Command command : AllCommands()) {
        QAction* const action = Action(command);
        ASSERT_NE(action, nullptr) << static_cast<int>(command);
        SCOPED_TRACE(action->text().toStdString());
        EXPECT_FALSE(action->text().isEmpty());
        EXPECT_FALSE(action->statusTip().isEmpty());
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        EXPECT_FALSE(keys.isEmpty());
        EXPECT_TRUE(action->toolTip().contains("(" + keys + ")"));
        EXPECT_TRUE(action->toolTip().startsWith(action->statusTip()));
        EXPECT_TRUE(in_menus.contains(action));
    }
}

TEST_F(MainWindowActionsTest, NoTwoCommandsShareKeysOrWords) {
    QSet<QString> keys;
    QSet<QString> words;
    for (const Command command : AllCommands()) {
        keys.insert(Action(command)->shortcut().toString());
        words.insert(Action(command)->text().remove(u'&'));
    }
    EXPECT_EQ(keys.size(), static_cast<int>(Command::kCount));
    EXPECT_EQ(words.size(), static_cast<int>(Command::kCount));
}

TEST_F(MainWindowActionsTest, NoTwoEntriesOfAMenuShareALetter) {
    for (QMenu* const menu : window->menuBar()->findChildren<QMenu*>()) {
        QSet<QChar> letters;
        for (const QAction* const action : menu->actions()) {
            const int at = static_cast<int>(action->text().indexOf(u'&'));
            if (action->isSeparator() || at < 0) continue;
            const QChar letter = action->text().at(at + 1).toLower();
            EXPECT_FALSE(letters.contains(letter))
                << menu->title().toStdString() << ": " << action->text().toStdString();
            letters.insert(letter);
        }
    }
}

TEST_F(MainWindowActionsTest, WithoutAGraphOneOpensAndSetsUp) {
    using enum Command;
    EXPECT_EQ(Enabled(), (std::vector<Command>{kOpen, kQuit, kGlide, kSystemColors, kLightColors,
                                               kDarkColors, kHelp, kAbout}));
}

TEST_F(MainWindowActionsTest, WithAGraphTheViewChanges) {
    using enum Command;
    Open();
    ExpectEnabled({kReload, kExportAll, kExportVisible, kCopyPicture, kFind, kShowAll, kFit,
                   kActualSize, kZoomIn, kZoomOut, kPan, kZoomArea, kSelectArea, kMoveNodes},
                  true);
    ExpectEnabled({kUndo, kRedo, kFoldParents, kUnfoldParents, kFoldChildren, kUnfoldChildren,
                   kHide, kShowOnly, kMark, kCentre, kCopyCaption},
                  false);
}

TEST_F(MainWindowActionsTest, WithASelectionNodesChange) {
    using enum Command;
    Open();
    Click("first");
    ExpectEnabled({kFoldChildren, kHide, kShowOnly, kMark, kCentre, kCopyCaption}, true);
    ExpectEnabled({kFoldParents, kUnfoldParents, kUnfoldChildren}, false);
    Do(kFoldChildren);
    ExpectEnabled({kUnfoldChildren, kUndo}, true);
    ExpectEnabled({kFoldChildren, kRedo}, false);
    Click("third");
    ExpectEnabled({kShowOnly, kCentre}, false);
    ExpectEnabled({kHide, kUnfoldParents}, true);
    Do(kClearSelection);
    ExpectEnabled({kHide, kUnfoldChildren, kMark}, false);
}

TEST_F(MainWindowActionsTest, UndoAndRedoSayWhat) {
    Open();
    Click("third");
    Do(Command::kHide);
    EXPECT_EQ(Action(Command::kUndo)->text(), u"&Undo hiding “third”");
    EXPECT_EQ(Action(Command::kRedo)->text(), u"&Redo");
    Do(Command::kUndo);
    EXPECT_EQ(Action(Command::kUndo)->text(), u"&Undo");
    EXPECT_EQ(Action(Command::kRedo)->text(), u"&Redo hiding “third”");
    EXPECT_FALSE(Action(Command::kUndo)->isEnabled());
    Do(Command::kRedo);
    EXPECT_TRUE(IsFlagSet(Named("third"), NodeHidden));
    Open();
    EXPECT_FALSE(Action(Command::kUndo)->isEnabled());
    EXPECT_EQ(Action(Command::kUndo)->text(), u"&Undo");
}

TEST_F(MainWindowActionsTest, ButtonsOfTheToolBarKeepTheirShortWords) {
    Open();
    Click("third");
    Do(Command::kHide);
    EXPECT_EQ(Action(Command::kUndo)->iconText(), u"Undo");
    for (const QAction* const action : window->findChild<QToolBar*>()->actions()) {
        if (action->isSeparator()) continue;
        EXPECT_FALSE(action->iconText().isEmpty());
        EXPECT_LE(action->iconText().size(), 12);
    }
}

TEST_F(MainWindowActionsTest, OneToolIsOnAtATime) {
    Open();
    CGraphViewer* const viewer = Widget()->viewer();
    EXPECT_TRUE(Action(Command::kPan)->isChecked());
    EXPECT_TRUE(viewer->GetDragTracker()->IsEnabled());
    EXPECT_FALSE(viewer->GetZoomRect()->IsEnabled());
    Do(Command::kZoomArea);
    EXPECT_FALSE(Action(Command::kPan)->isChecked());
    EXPECT_FALSE(viewer->GetDragTracker()->IsEnabled());
    EXPECT_TRUE(viewer->GetZoomRect()->IsEnabled());
    EXPECT_EQ(viewer->GetRubberMode(), RubberZoom);
    Do(Command::kSelectArea);
    EXPECT_TRUE(viewer->GetZoomRect()->IsEnabled());
    EXPECT_EQ(viewer->GetRubberMode(), RubberSelect);
    Do(Command::kPan);
    EXPECT_TRUE(viewer->GetDragTracker()->IsEnabled());
    EXPECT_FALSE(viewer->GetZoomRect()->IsEnabled());
    Do(Command::kMoveNodes);
    EXPECT_TRUE(viewer->GetMoveNodes());
    Do(Command::kMoveNodes);
    EXPECT_FALSE(viewer->GetMoveNodes());
}

TEST_F(MainWindowActionsTest, AToolStaysWithTheNextGraph) {
    Open();
    Do(Command::kSelectArea);
    Open();
    EXPECT_TRUE(Widget()->viewer()->GetZoomRect()->IsEnabled());
    EXPECT_EQ(Widget()->viewer()->GetRubberMode(), RubberSelect);
}

TEST_F(MainWindowActionsTest, AnAreaSelectsTheNodesThatItTouches) {
    Open();
    Do(Command::kSelectArea);
    const QPoint at = MiddleOf("first");
    const double scale = Widget()->viewer()->GetScale();
    const int half = static_cast<int>(Named("first").GetSize().cy * scale / 2.0);
    nodeline::test::Drag(Widget(), at - QPoint(5, half + 4), at + QPoint(5, half + 4));
    EXPECT_TRUE(IsFlagSet(Named("first"), NodeSelected));
    EXPECT_FALSE(IsFlagSet(Named("second"), NodeSelected));
    EXPECT_TRUE(Action(Command::kHide)->isEnabled());
    EXPECT_FALSE(told.filter("1 selected: first").isEmpty());
}

TEST_F(MainWindowActionsTest, AnAreaFillsTheWindow) {
    Open();
    Do(Command::kZoomArea);
    const double scale = Widget()->viewer()->GetScale();
    const QPoint at = MiddleOf("second");
    nodeline::test::Drag(Widget(), at - QPoint(60, 40), at + QPoint(60, 40));
    EXPECT_GT(Widget()->viewer()->GetScale(), 2.0 * scale);
    const QPoint way = MiddleOf("second") - Widget()->rect().center();
    EXPECT_LT(std::abs(way.x()), Widget()->width() / 2);
    EXPECT_LT(std::abs(way.y()), Widget()->height() / 2);
}

TEST_F(MainWindowActionsTest, ADragOfANodeIsUndone) {
    Open();
    Do(Command::kMoveNodes);
    const point<double> before = Named("first").GetPosition();
    const QPoint at = MiddleOf("first");
    nodeline::test::Drag(Widget(), at, at + QPoint(0, 30));
    EXPECT_NE(Named("first").GetPosition(), before);
    EXPECT_EQ(Action(Command::kUndo)->text(), u"&Undo moving “first”");
    Do(Command::kUndo);
    EXPECT_EQ(Named("first").GetPosition(), before);
}

TEST_F(MainWindowActionsTest, ActionsZoom) {
    Open();
    Do(Command::kActualSize);
    EXPECT_EQ(Widget()->viewer()->GetScale(), 1.0);
    Do(Command::kZoomIn);
    EXPECT_EQ(Widget()->viewer()->GetScale(), 1.25);
    EXPECT_FALSE(told.filter("125 %").isEmpty());
    Do(Command::kZoomOut);
    EXPECT_EQ(Widget()->viewer()->GetScale(), 1.0);
    for (int i = 0; i < 8; ++i) Do(Command::kZoomIn);
    Do(Command::kFit);
    EXPECT_LT(Named("first").GetSize().cx * Widget()->viewer()->GetScale(), Widget()->width());
}

TEST_F(MainWindowActionsTest, ArrowKeysMoveThePicture) {
    Open();
    for (int i = 0; i < 10; ++i) Do(Command::kZoomIn);
    const double start = Widget()->viewer()->GetStartX();
    nodeline::test::Key(Widget(), QEvent::KeyPress, Qt::Key_Right);
    EXPECT_LT(Widget()->viewer()->GetStartX(), start);
    nodeline::test::Key(Widget(), QEvent::KeyPress, Qt::Key_Left);
    EXPECT_NEAR(Widget()->viewer()->GetStartX(), start, 1e-9);
}

// ---------------------------------------------------------------------------------------------
// Nodes

TEST_F(MainWindowActionsTest, SelectedNodesAreHiddenAndShown) {
    Open();
    Click("first");
    Click("third");
    Do(Command::kHide);
    EXPECT_EQ(Shown(), (std::vector<std::string>{"box", "inner", "second"}));
    Do(Command::kShowAll);
    EXPECT_EQ(Shown().size(), 5u);
    Do(Command::kUndo);
    Do(Command::kUndo);
    EXPECT_EQ(Shown().size(), 5u);
}

TEST_F(MainWindowActionsTest, HiddenNodesAreSelectedAgainWhenTheyComeBack) {
    Open();
    Click("third");
    Do(Command::kHide);
    ExpectEnabled({Command::kHide, Command::kMark, Command::kCentre}, false);
    EXPECT_FALSE(told.back().contains("selected"));
    Click("first");
    ExpectEnabled({Command::kShowOnly, Command::kCentre}, true);
    EXPECT_TRUE(told.back().contains("1 selected: first"));
    Do(Command::kMark);
    EXPECT_FALSE(IsFlagSet(Named("third"), NodeMarked));
    Do(Command::kUndo);
    EXPECT_TRUE(told.back().contains("2 selected: first, third"));
}

TEST_F(MainWindowActionsTest, WhatRemainsStaysAtItsPixelWhenANodeIsHidden) {
    Open();
    Do(Command::kActualSize);
    for (const char* const caption : {"third", "inner", "second"}) {
        SCOPED_TRACE(caption);
        const QPoint before = MiddleOf("first");
        Click(caption);
        Do(Command::kHide);
        EXPECT_LE((MiddleOf("first") - before).manhattanLength(), 1);
        Do(Command::kUndo);
        EXPECT_LE((MiddleOf("first") - before).manhattanLength(), 1);
        Do(Command::kClearSelection);
    }
}

TEST_F(MainWindowActionsTest, NeighboursFoldAndUnfold) {
    Open();
    Click("second");
    Do(Command::kFoldParents);
    Do(Command::kFoldChildren);
    EXPECT_EQ(Shown(), (std::vector<std::string>{"box", "inner", "second"}));
    Do(Command::kUnfoldParents);
    Do(Command::kUnfoldChildren);
    EXPECT_EQ(Shown().size(), 5u);
    Do(Command::kShowOnly);
    EXPECT_EQ(Shown(), (std::vector<std::string>{"first", "second", "third"}));
}

TEST_F(MainWindowActionsTest, MarksComeAndGo) {
    Open();
    Click("second");
    Do(Command::kMark);
    EXPECT_TRUE(IsFlagSet(Named("second"), NodeMarked));
    Do(Command::kMark);
    EXPECT_FALSE(IsFlagSet(Named("second"), NodeMarked));
}

TEST_F(MainWindowActionsTest, TheSelectedNodeIsCentred) {
    Open();
    Click("third");
    for (int i = 0; i < 8; ++i) Do(Command::kZoomIn);
    Do(Command::kCentre);
    EXPECT_TRUE(IsInTheMiddle("third"));
}

}  // namespace
}  // namespace nodeline::app
