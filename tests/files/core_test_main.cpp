// Runs tests that need Qt Core (processes, temporary folders) but no window system.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
