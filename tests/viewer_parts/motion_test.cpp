#include <apps/viewer/motion.h>
#include <gtest/gtest.h>
#include <viewer_parts/waiting.h>

#include <QDir>
#include <QTemporaryDir>

namespace nodeline::app {
namespace {

using namespace test;

class MotionTest : public testing::Test {
protected:
    void SetUp() override {
        qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
        qputenv("XDG_CONFIG_DIRS", folder.filePath("none").toUtf8());
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }
    void TearDown() override { qunsetenv("XDG_CONFIG_DIRS"); }

    void Set(const QString& file, const std::string& text) const {
        QDir(folder.path()).mkpath("gtk-3.0");
        QDir(folder.path()).mkpath("gtk-4.0");
        ASSERT_TRUE(Write(folder.filePath(file), text));
    }

    QTemporaryDir folder;
};

TEST_F(MotionTest, ThingsMoveWhereNobodySaysOtherwise) { EXPECT_FALSE(DesktopReducesMotion()); }

TEST_F(MotionTest, AFactorOfNothingStopsThem) {
    Set("kdeglobals", "[KDE]\nAnimationDurationFactor=0.5\n");
    EXPECT_FALSE(DesktopReducesMotion());
    Set("kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    EXPECT_TRUE(DesktopReducesMotion());
}

TEST_F(MotionTest, ASwitchStopsThemInEitherNotation) {
    for (const char* const off : {"false", "0", "False"}) {
        Set("gtk-3.0/settings.ini", std::string("[Settings]\ngtk-enable-animations=") + off);
        EXPECT_TRUE(DesktopReducesMotion()) << off;
    }
    Set("gtk-4.0/settings.ini", "[Settings]\ngtk-enable-animations=true\n");
    EXPECT_FALSE(DesktopReducesMotion()) << "the newer settings go first";
}

TEST_F(MotionTest, SettingsOfOtherThingsSayNothing) {
    Set("kdeglobals", "[General]\nAnimationDurationFactor=0\n");
    Set("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=false\n");
    EXPECT_FALSE(DesktopReducesMotion());
}

}  // namespace
}  // namespace nodeline::app
