// Runs the X11 clipboard tests with a real QApplication on the xcb platform; the X server
// is the private one that run_under_xvfb.sh started.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>
#include <cstdio>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    if (QGuiApplication::platformName() != QStringLiteral("xcb")) {
        std::fprintf(stderr, "these tests need Qt's xcb platform, got %s\n",
                     qPrintable(QGuiApplication::platformName()));
        return 1;
    }
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
