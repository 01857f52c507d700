#include <viewer_parts/main_window_stage.h>

#include <QColor>
#include <QDockWidget>
#include <QImage>
#include <QMenu>
#include <QMenuBar>

// How the window looks and moves, and what it remembers.

namespace nodeline::app {
namespace {

using namespace test;

class MainWindowLooksTest : public MainWindowTest {
protected:
    [[nodiscard]] QColor Background() const { return Widget()->picture(true).pixelColor(1, 1); }
};

TEST_F(MainWindowLooksTest, ColoursChangeAndGoBack) {
    Open();
    Do(Command::kLightColors);
    const QImage light = Widget()->picture(true);
    EXPECT_GT(Background().lightness(), 200);
    EXPECT_FALSE(IsDark(window->palette()));
    Do(Command::kDarkColors);
    nodeline::test::Settle();
    const QImage dark = Widget()->picture(true);
    EXPECT_NE(dark, light);
    EXPECT_LT(Background().lightness(), 60);
    EXPECT_TRUE(IsDark(window->palette()));
    EXPECT_EQ(Widget()->grab().toImage().pixelColor(1, 1), Background()) << "painted anew";
    Do(Command::kLightColors);
    EXPECT_EQ(Widget()->picture(true), light);
}

TEST_F(MainWindowLooksTest, AGraphThatIsOpenedInTheDarkIsDark) {
    Make({LayoutKind::kStable, Appearance::kDark});
    EXPECT_TRUE(Action(Command::kDarkColors)->isChecked());
    Open();
    EXPECT_LT(Background().lightness(), 60);
}

TEST_F(MainWindowLooksTest, GlidingIsSwitchedOffAndOn) {
    Open();
    Do(Command::kGlide);
    EXPECT_EQ(Widget()->glideTime(), 0);
    EXPECT_FALSE(Action(Command::kGlide)->isChecked());
    Do(Command::kGlide);
    EXPECT_GT(Widget()->glideTime(), 0);
}

TEST_F(MainWindowLooksTest, NothingGlidesWhereTheDesktopAsksForLessMotion) {
    ASSERT_TRUE(Write(folder.filePath("kdeglobals"), "[KDE]\nAnimationDurationFactor=0\n"));
    Make();
    EXPECT_EQ(Widget()->glideTime(), 0);
    EXPECT_TRUE(Action(Command::kGlide)->isChecked()) << "what a person has chosen stays";
}

TEST_F(MainWindowLooksTest, SettingsAreThereForTheNextWindow) {
    Open();
    Do(Command::kDarkColors);
    Do(Command::kGlide);
    Do(Command::kOverview);
    Do(Command::kFind);
    window->resize(777, 555);
    nodeline::test::Settle();
    window->close();
    ApplyAppearance(Appearance::kSystem);
    Make();
    EXPECT_TRUE(Action(Command::kDarkColors)->isChecked());
    EXPECT_TRUE(IsDark(QApplication::palette()));
    EXPECT_FALSE(Action(Command::kGlide)->isChecked());
    EXPECT_EQ(Widget()->glideTime(), 0);
    EXPECT_FALSE(Action(Command::kOverview)->isChecked());
    EXPECT_TRUE(window->findChild<QDockWidget*>("overview")->isHidden());
    EXPECT_EQ(window->size(), QSize(777, 555));
    QMenu* const file = window->menuBar()->actions().front()->menu();
    Q_EMIT file->aboutToShow();
    for (QAction* const action : file->actions()) {
        if (action->menu() == nullptr) continue;
        ASSERT_EQ(action->menu()->actions().size(), 1);
        EXPECT_EQ(action->menu()->actions().front()->toolTip(), path);
    }
}

TEST_F(MainWindowLooksTest, AnUnknownAppearanceInTheSettingsIsTheDesktops) {
    QSettings().setValue("view/appearance", 17);
    Make();
    EXPECT_TRUE(Action(Command::kSystemColors)->isChecked());
}

}  // namespace
}  // namespace nodeline::app
