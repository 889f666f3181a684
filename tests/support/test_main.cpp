// Runs the widget tests with a real QApplication on the offscreen platform.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // The user's data folder of the tests is a throw-away one, never the real one.
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
