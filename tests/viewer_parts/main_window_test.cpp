#include <viewer_parts/main_window_stage.h>

#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>
#include <QUrl>

// The window as a whole.

namespace nodeline::app {
namespace {

using namespace test;
using Captions = std::vector<std::string>;

class MainWindowWholeTest : public MainWindowTest {
protected:
    [[nodiscard]] QWidget* Page() const {
        return window->findChild<QStackedWidget*>()->currentWidget();
    }
    void Drop(const QList<QUrl>& urls) const {
        QMimeData data;
        data.setUrls(urls);
        // A drop goes to whoever has taken the drag.
        nodeline::test::Send(window.get(), QDragEnterEvent(QPoint(50, 50), Qt::CopyAction, &data,
                                                           Qt::LeftButton, Qt::NoModifier));
        QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.get(), &event);
    }
    // Asks for the menu at a point of the picture, and does something with it while it is open.
    template <class F>
    void WithMenu(QPoint at, F&& use) {
        bool is_open = false;
        QTimer::singleShot(0, window.get(), [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            is_open = true;
            use(menu);
            menu->close();
        });
        nodeline::test::Send(
            Widget(), QContextMenuEvent(QContextMenuEvent::Mouse, at, Widget()->mapToGlobal(at)));
        EXPECT_TRUE(is_open);
    }
    // Opens a dialog, and does something with it.
    template <class T, class F>
    void WithDialog(Command command, F&& use) {
        bool is_open = false;
        QTimer::singleShot(0, window.get(), [&] {
            auto* const dialog = qobject_cast<T*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            is_open = true;
            use(dialog);
        });
        Do(command);
        EXPECT_TRUE(is_open);
    }
};

// ---------------------------------------------------------------------------------------------
// Files

TEST_F(MainWindowWholeTest, AFileTakesTheStartPageAway) {
    EXPECT_NE(Page(), Widget());
    Open();
    EXPECT_EQ(Page(), Widget());
    EXPECT_EQ(Shown().size(), 5u);
    EXPECT_EQ(window->windowTitle(), u"graph.txt");
    EXPECT_EQ(window->windowFilePath(), path);
    EXPECT_EQ(pictures, 1);
    EXPECT_FALSE(told.filter("5 of 5 nodes").isEmpty());
    EXPECT_LE(Widget()->viewer()->GetScale(), 1.0) << "a small graph is not blown up";
}

TEST_F(MainWindowWholeTest, AFileMayBeDropped) {
    ASSERT_TRUE(Write(path, kWindowText));
    Drop({QUrl::fromLocalFile(path)});
    ASSERT_TRUE(WaitFor([this] { return pictures == 1; }));
    EXPECT_EQ(Shown().size(), 5u);
}

TEST_F(MainWindowWholeTest, OnlyFilesOfThisMachineMayBeDropped) {
    Drop({QUrl("https://example.org/graph.txt")});
    EXPECT_EQ(Message(), u"https://example.org/graph.txt: is no file on this machine");
    Drop({});
    Rest(50);
    EXPECT_EQ(pictures, 0);
}

TEST_F(MainWindowWholeTest, WhatGoesWrongIsToldUntilTheNextGraph) {
    Open();
    window->openFile(folder.filePath("missing.txt"));
    ASSERT_TRUE(IsTold("missing.txt: cannot be opened"));
    EXPECT_TRUE(Message().contains("missing.txt: cannot be opened"));
    EXPECT_EQ(Shown().size(), 5u);
    EXPECT_EQ(window->windowTitle(), u"graph.txt");
    Open();
    EXPECT_EQ(Message(), QString());
}

TEST_F(MainWindowWholeTest, WarningsStayWhenTheGraphIsShown) {
    Open("a text\n[nodes]\n1 \"first\" 0 0\n1 \"again\" 0 0\n");
    EXPECT_TRUE(Message().contains(":4: warning: ")) << Message().toStdString();
}

TEST_F(MainWindowWholeTest, WarningsOfAReloadStayAsWell) {
    Open();
    ASSERT_TRUE(Write(path, "a text\n[nodes]\n1 \"first\" 0 0\n1 \"again\" 0 0\n"));
    ASSERT_TRUE(IsTold("Read again: "));
    EXPECT_TRUE(Message().contains(":4: warning: ")) << Message().toStdString();
}

TEST_F(MainWindowWholeTest, AReloadIsToldAndCounted) {
    Open();
    std::string text = kWindowText;
    text.replace(text.find("[edges]"), 7, "6 \"new\" 0 0\n7 \"newer\" 0 0\n[edges]");
    ASSERT_TRUE(Write(path, text));
    ASSERT_TRUE(IsTold("Read again: 2 nodes came, 0 went"));
    EXPECT_FALSE(told.filter("7 of 7 nodes").isEmpty());
    Do(Command::kReload);
    ASSERT_TRUE(IsTold("Read again: nothing has changed"));
}

TEST_F(MainWindowWholeTest, ASelectedNodeThatGoesIsNoLongerSelected) {
    Open();
    Click("first");
    ASSERT_FALSE(told.filter("1 selected: first").isEmpty());
    ASSERT_TRUE(Write(path, "a text\n[nodes]\n2 \"second\" 0 0\n[edges]\n"));
    ASSERT_TRUE(IsTold("Read again: "));
    EXPECT_FALSE(Action(Command::kHide)->isEnabled());
    for (const QLabel* const label : window->findChildren<QLabel*>()) {
        EXPECT_FALSE(label->text().contains("selected: "));
    }
}

TEST_F(MainWindowWholeTest, StatusFollowsWhatIsHiddenAndSelected) {
    Open();
    Click("third");
    EXPECT_FALSE(told.filter("5 of 5 nodes, ").isEmpty());
    EXPECT_FALSE(told.filter(", 1 selected: third").isEmpty());
    Do(Command::kHide);
    EXPECT_FALSE(told.filter("4 of 5 nodes, ").isEmpty());
}

TEST_F(MainWindowWholeTest, RecentFilesAreInTheMenuTheLatestFirst) {
    const QString other = folder.filePath("a & b.txt");
    ASSERT_TRUE(Write(other, kWindowText));
    window->openFile(other);
    ASSERT_TRUE(WaitFor([this] { return pictures == 1; }));
    Open();
    QMenu* const file = window->menuBar()->actions().front()->menu();
    Q_EMIT file->aboutToShow();
    QMenu* recent = nullptr;
    for (QAction* const action : file->actions()) {
        if (action->menu() != nullptr) recent = action->menu();
    }
    ASSERT_NE(recent, nullptr);
    ASSERT_EQ(recent->actions().size(), 2);
    EXPECT_EQ(recent->actions()[0]->text(), u"graph.txt");
    EXPECT_EQ(recent->actions()[1]->text(), u"a && b.txt");
    recent->actions()[1]->trigger();
    ASSERT_TRUE(WaitFor([this] { return pictures == 3; }));
    EXPECT_EQ(window->windowFilePath(), other);
}

// ---------------------------------------------------------------------------------------------
// Menus at the pointer

TEST_F(MainWindowWholeTest, TheMenuOfANodeIsForThatNode) {
    Open();
    Click("first");
    WithMenu(MiddleOf("third"), [this](QMenu* menu) {
        EXPECT_TRUE(menu->actions().contains(Action(Command::kHide)));
        EXPECT_TRUE(Action(Command::kFoldParents)->isEnabled()) << "the third has a parent";
        Action(Command::kHide)->trigger();
    });
    EXPECT_EQ(Shown(), (Captions{"box", "first", "inner", "second"}));
    EXPECT_FALSE(Action(Command::kFoldParents)->isEnabled()) << "the first has none";
}

TEST_F(MainWindowWholeTest, TheMenuOfTheBackgroundIsForTheGraph) {
    Open();
    WithMenu({1, 1}, [this](QMenu* menu) {
        EXPECT_TRUE(menu->actions().contains(Action(Command::kFit)));
        EXPECT_TRUE(menu->actions().contains(Action(Command::kShowAll)));
        EXPECT_FALSE(menu->actions().contains(Action(Command::kHide)));
    });
}

TEST_F(MainWindowWholeTest, AReloadMayTakeTheNodeOfAnOpenMenuAway) {
    Open();
    WithMenu(MiddleOf("third"), [this](QMenu*) {
        ASSERT_TRUE(Write(path, "a text\n[nodes]\n1 \"first\" 0 0\n[edges]\n"));
        ASSERT_TRUE(IsTold("Read again: "));
        for (const Command command : {Command::kHide, Command::kShowOnly, Command::kFoldParents,
                                      Command::kMark, Command::kCentre, Command::kShowAll}) {
            Action(command)->trigger();
        }
    });
    EXPECT_EQ(Shown(), Captions{"first"});
}

// ---------------------------------------------------------------------------------------------
// Finding and looking

TEST_F(MainWindowWholeTest, ANodeThatIsFoundIsShownInTheMiddle) {
    Open();
    Node box = Named("box");
    Widget()->change([&box] {
        Hide(box);
        box.GetOwner().UpdateLayout();
    });
    ASSERT_EQ(Shown(), (Captions{"first", "second", "third"}));
    for (int i = 0; i < 6; ++i) Do(Command::kZoomIn);
    Do(Command::kFind);
    auto* const panel = window->findChild<FindPanel*>();
    EXPECT_TRUE(panel->isVisible());
    auto* const line = panel->findChild<QLineEdit*>();
    line->setText("inn");
    nodeline::test::Key(line, QEvent::KeyPress, Qt::Key_Return);
    EXPECT_EQ(Shown().size(), 5u);
    EXPECT_TRUE(IsInTheMiddle("inner"));
    EXPECT_TRUE(Action(Command::kUndo)->isEnabled());
    nodeline::test::Key(line, QEvent::KeyPress, Qt::Key_Escape);
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(MainWindowWholeTest, NodesThatComeByAReloadAreFound) {
    Open();
    std::string text = kWindowText;
    text.replace(text.find("[edges]"), 7, "6 \"novel\" 0 4\n[edges]");
    ASSERT_TRUE(Write(path, text));
    ASSERT_TRUE(IsTold("Read again: "));
    for (int i = 0; i < 6; ++i) Do(Command::kZoomIn);
    Do(Command::kFind);
    auto* const line = window->findChild<FindPanel*>()->findChild<QLineEdit*>();
    line->setText("novel");
    nodeline::test::Key(line, QEvent::KeyPress, Qt::Key_Return);
    EXPECT_TRUE(IsInTheMiddle("novel"));
}

TEST_F(MainWindowWholeTest, ADoubleClickOnAnOwnerCentresIt) {
    Open();
    for (int i = 0; i < 2; ++i) Do(Command::kZoomIn);
    Widget()->reveal(Named("box"));
    Widget()->viewer()->SetStartX(Widget()->viewer()->GetStartX() - 60.0);
    ASSERT_FALSE(IsInTheMiddle("box"));
    nodeline::test::DoubleClick(Widget(), TopOf("box"));
    EXPECT_TRUE(IsInTheMiddle("box"));
}

TEST_F(MainWindowWholeTest, ADoubleClickOnALeafLeavesTheViewAlone) {
    Open();
    for (int i = 0; i < 2; ++i) Do(Command::kZoomIn);
    Widget()->reveal(Named("third"));
    Widget()->viewer()->SetStartX(Widget()->viewer()->GetStartX() - 60.0);
    const double start = Widget()->viewer()->GetStartX();
    nodeline::test::DoubleClick(Widget(), MiddleOf("third"));
    EXPECT_EQ(Widget()->viewer()->GetStartX(), start);
}

// ---------------------------------------------------------------------------------------------
// Pictures and captions

TEST_F(MainWindowWholeTest, WhatIsInViewIsCopied) {
    Open();
    Do(Command::kCopyPicture);
    const QImage copied = QApplication::clipboard()->image();
    ASSERT_FALSE(copied.isNull());
    EXPECT_EQ(copied.size(), Widget()->picture(true).size());
    EXPECT_EQ(copied.convertToFormat(QImage::Format_RGB32), Widget()->picture(true));
}

TEST_F(MainWindowWholeTest, CaptionsAreCopied) {
    Open();
    Click("first");
    Click("third");
    Do(Command::kCopyCaption);
    EXPECT_EQ(QApplication::clipboard()->text(), u"first\nthird");
}

TEST_F(MainWindowWholeTest, PicturesAreExportedWithTheirEndings) {
    Open();
    WithDialog<QFileDialog>(Command::kExportAll, [this](QFileDialog* dialog) {
        EXPECT_EQ(dialog->selectedFiles(), QStringList(folder.filePath("graph.svg")));
        dialog->selectFile(folder.filePath("whole.png"));
        static_cast<QDialog*>(dialog)->accept();
    });
    EXPECT_TRUE(told.contains("Exported " + folder.filePath("whole.png")));
    const QImage whole(folder.filePath("whole.png"));
    EXPECT_EQ(whole.convertToFormat(QImage::Format_RGB32), Widget()->picture(false));
    WithDialog<QFileDialog>(Command::kExportVisible, [this](QFileDialog* dialog) {
        dialog->selectFile(folder.filePath("view.png"));
        static_cast<QDialog*>(dialog)->accept();
    });
    const QImage view(folder.filePath("view.png"));
    EXPECT_EQ(view.convertToFormat(QImage::Format_RGB32), Widget()->picture(true));
}

TEST_F(MainWindowWholeTest, APictureThatCannotBeWrittenIsTold) {
    Open();
    WithDialog<QFileDialog>(Command::kExportAll, [this](QFileDialog* dialog) {
        dialog->selectFile(folder.filePath("picture.gif"));
        static_cast<QDialog*>(dialog)->accept();
    });
    EXPECT_TRUE(Message().contains("picture.gif ends in none of")) << Message().toStdString();
}

TEST_F(MainWindowWholeTest, ADialogThatIsGivenUpChangesNothing) {
    Open();
    const QStringList before = told;
    WithDialog<QFileDialog>(Command::kExportAll, [](QFileDialog* dialog) { dialog->reject(); });
    WithDialog<QFileDialog>(Command::kOpen, [](QFileDialog* dialog) { dialog->reject(); });
    EXPECT_EQ(told, before);
    EXPECT_EQ(Message(), QString());
}

TEST_F(MainWindowWholeTest, AFileIsChosenInADialog) {
    ASSERT_TRUE(Write(path, kWindowText));
    WithDialog<QFileDialog>(Command::kOpen, [this](QFileDialog* dialog) {
        dialog->selectFile(path);
        static_cast<QDialog*>(dialog)->accept();
    });
    ASSERT_TRUE(WaitFor([this] { return pictures == 1; }));
}

TEST_F(MainWindowWholeTest, HelpAndAboutSaySomething) {
    WithDialog<QMessageBox>(Command::kHelp, [](QMessageBox* box) {
        EXPECT_TRUE(box->text().contains("Click a port"));
        box->reject();
    });
    WithDialog<QMessageBox>(Command::kAbout, [](QMessageBox* box) {
        EXPECT_TRUE(box->text().contains(QApplication::applicationVersion()));
        box->reject();
    });
}

// ---------------------------------------------------------------------------------------------
// Ends

TEST_F(MainWindowWholeTest, AWindowMayBeClosedWhileItLoads) {
    ASSERT_TRUE(Write(path, LargeText(200000)));
    window->openFile(path);
    Rest(30);
    EXPECT_TRUE(window->close());
    Rest(100);
    EXPECT_EQ(pictures, 0);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(MainWindowWholeTest, AWindowMayGoWhileItLoads) {
    Open();
    ASSERT_TRUE(Write(folder.filePath("large.txt"), LargeText(200000)));
    window->openFile(folder.filePath("large.txt"));
    window.reset();
    Rest(50);
    EXPECT_EQ(pictures, 1);
}

TEST_F(MainWindowWholeTest, AWindowMayGoWhileItsNodesGlide) {
    Open();
    Widget()->setGlideTime(10000);
    Click("second");
    Do(Command::kHide);
    Do(Command::kUndo);
    EXPECT_TRUE(Widget()->isGliding());
    window.reset();
    Rest(50);
    EXPECT_EQ(pictures, 1);
}

TEST_F(MainWindowWholeTest, LoadingThatTakesLongIsShownAndCancelled) {
    Open();
    const QString large = folder.filePath("large.txt");
    ASSERT_TRUE(Write(large, LargeText(400000)));
    window->openFile(large);
    QPushButton* cancel = nullptr;
    ASSERT_TRUE(WaitFor([&] {
        for (QPushButton* const button : window->findChildren<QPushButton*>()) {
            if (button->text() == u"Cancel" && button->isVisible()) cancel = button;
        }
        return cancel != nullptr;
    }));
    cancel->click();
    EXPECT_FALSE(cancel->isVisible());
    Rest(200);
    EXPECT_EQ(pictures, 1);
    EXPECT_EQ(Shown().size(), 5u);
}

}  // namespace
}  // namespace nodeline::app
