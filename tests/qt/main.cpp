// Runs the tests without a screen, whatever the machine has.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
