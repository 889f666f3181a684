// A started main window on fake seams, with its files in a temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "mainwindow/main_form.h"
#include "support/fakes.h"
#include "support/qt_printers.h"
#include "ui_main_form.h"

namespace lumidot::testing {

class MainFormTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        start();
    }
    void TearDown() override { window.reset(); }

    // Creates and loads the window afresh (files in folder are kept).
    void start() {
        window = std::make_unique<MainForm>(fake.platform, folder.path());
        window->Form_Load();
    }
    Ui::MainForm& ui() { return window->form(); }
    QString pane() const { return window->sysExOutText(); }
    // Puts text in the pane as a decoding run leaves it, not laid out again.
    void showResult(const QString& text) {
        window->model().setSkipOutputLayout(true);
        window->SetSysExOutText(text);
        window->model().setSkipOutputLayout(false);
    }

    FakePlatform fake;
    QTemporaryDir folder;
    std::unique_ptr<MainForm> window;
};

}  // namespace lumidot::testing
