// The real main window with a recording MIDI port behind its real sender: the MIDI menu is
// opened and used with the keyboard, as a user would, and every message the port was given
// is read back once the sender has finished.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "codec/graphic_page.h"
#include "device/fake_port.h"
#include "files/file_bytes.h"
#include "mainwindow/main_form.h"
#include "mainwindow/midi_menu.h"
#include "storage/preferences.h"
#include "support/fakes.h"
#include "support/qt_printers.h"
#include "ui_main_form.h"

namespace lumidot::testing {

using device::Bytes;
using device::testing::RecordingPort;
using namespace std::chrono_literals;

class MidiWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        // Preferences of this test's own, which tests running side by side never share.
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        QCoreApplication::setApplicationName(QStringLiteral("lumidot-midi-%1-%2")
                                                 .arg(test->test_suite_name(), test->name())
                                                 .replace(QLatin1Char('/'), QLatin1Char('-')));
        removePreferences();
        fake.platform.midiPort = [this] {
            ++portsMade;
            auto made = std::make_unique<RecordingPort>(next);
            port = made.get();
            return made;
        };
    }
    void TearDown() override {
        window.reset();
        removePreferences();
    }

    void removePreferences() {
        const QString file = OpenPreferences()->fileName();
        QFile::remove(file);
    }
    void remember(const char* key, const QVariant& value) {
        auto preferences = OpenPreferences();
        preferences->setValue(QLatin1String(key), value);
    }
    QVariant preference(const char* key) { return OpenPreferences()->value(QLatin1String(key)); }

    // Creates and loads the window afresh, active as the user's window is.
    void start() {
        window = std::make_unique<MainForm>(fake.platform, folder.path());
        window->Form_Load();
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        processEvents();
    }
    void restart() {
        window->close();
        window.reset();
        start();
    }

    Ui::MainForm& ui() { return window->form(); }
    MidiMenu& midi() { return window->midi(); }
    QMenu* menu() { return midi().menu(); }
    QAction* action(const char* name) { return window->findChild<QAction*>(name); }
    QString status() { return action("actionMidiStatus")->text(); }
    QAction* pauseItem(int milliseconds) {
        for (QAction* item : window->findChild<QMenu*>("menuMidiPause")->actions()) {
            if (item->data().toInt() == milliseconds) return item;
        }
        return nullptr;
    }
    // The menu's items from the first port item to the last, as shown.
    QStringList portTexts() {
        QStringList texts;
        bool inPorts = false;
        for (QAction* item : menu()->actions()) {
            if (item->objectName() == QLatin1String("actionNoMidiPort")) inPorts = true;
            if (inPorts && item->isSeparator()) break;
            if (inPorts) texts << item->text() + (item->isChecked() ? QStringLiteral(" [x]") : "");
        }
        return texts;
    }

    // A key pressed in the window, as the user's active window.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        // A window manager gives the window back its activation when a popup closes; the
        // offscreen platform leaves it with the popup, and activates a popup when it gets
        // round to it, after the events waiting now.
        processEvents();
        QApplication::setActiveWindow(window.get());
        QTest::keyClick(window.get(), key, modifiers);
    }
    // Opens the MIDI menu with its access key, as on the keyboard.
    void openMenu() {
        key(Qt::Key_M, Qt::AltModifier);
        ASSERT_TRUE(QTest::qWaitFor([&] { return menu()->isVisible(); }, 2000))
            << "Alt+M does not open the MIDI menu";
    }
    // Presses a key in the open menu: an access key chooses its item, Escape closes it.
    void inMenu(Qt::Key key) {
        QTest::keyClick(menu(), key);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !menu()->isVisible(); }, 2000));
        processEvents();
    }
    // Opens the menu and chooses the item with this access key.
    void choose(Qt::Key key) {
        openMenu();
        inMenu(key);
    }
    void chooseFirstPort() {
        choose(Qt::Key_1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return midi().device().portOpen(); }, 2000))
            << status().toStdString();
    }
    static void processEvents() {
        // Reports from the sender's thread come as queued calls; a few rounds take them all.
        for (int i = 0; i < 5; ++i) QTest::qWait(5);
    }

    // Every message the port was given, once the sender is done.
    std::vector<Bytes> delivered() {
        EXPECT_TRUE(midi().device().drain(5000ms));
        std::vector<Bytes> messages;
        if (port) {
            for (const auto& d : port->delivered) messages.push_back(d.bytes);
        }
        return messages;
    }

    FakePlatform fake;
    QTemporaryDir folder;
    std::unique_ptr<MainForm> window;
    device::SteadyClock clock;
    RecordingPort next{&clock};     // each port made is a copy of this one
    RecordingPort* port = nullptr;  // owned by the window's sender
    int portsMade = 0;
};

}  // namespace lumidot::testing
