// The MIDI menu of the real window: the ports as listed when it opens, the chosen one checked
// and remembered between runs (never in settings.bin), the device's status in the menu, and
// each problem told once in a message box while the window goes on working.
#include <QFile>

#include "editor/grid_input.h"
#include "midi/midi_window_fixture.h"

namespace lumidot::testing {
namespace {

TEST_F(MidiWindowTest, WithoutAPortNothingOfTheMidiSystemIsTouched) {
    start();
    const QString caption = window->windowTitle();
    window->gridInput().FDPixelMouseMove(40, 0, 1);
    QTest::keyClicks(ui().txtTextIn, QStringLiteral("Hi"));
    key(Qt::Key_F5);
    processEvents();
    EXPECT_EQ(portsMade, 0);
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_EQ(menu()->title(), QStringLiteral("&MIDI"));
    EXPECT_EQ(window->windowTitle(), caption);
    EXPECT_EQ(window->clientArea()->size(), MainForm::kClientSize);
    // The menu stands between the program's own menus, before Help.
    const QList<QAction*> bar = window->menuBar()->actions();
    ASSERT_GE(bar.size(), 2);
    EXPECT_EQ(bar[bar.size() - 2], menu()->menuAction());
}

struct MenuCase {
    const char* name;
    std::vector<std::string> names;  // the ports the MIDI system lists
    bool systemDown;
    const char* remembered;  // the port chosen in an earlier run, or nullptr
    const char* status;
    QStringList ports;  // the port items as the opened menu shows them; [x] when checked
    bool sendingPossible;
    std::size_t boxes;  // after the menu was opened twice
};

void PrintTo(const MenuCase& c, std::ostream* os) {
    *os << c.name;
}

class MidiMenuTest : public MidiWindowTest, public ::testing::WithParamInterface<MenuCase> {};

TEST_P(MidiMenuTest, ShowsThePortsAndStatusAsOpened) {
    const MenuCase& c = GetParam();
    next.names = c.names;
    next.systemDown = c.systemDown;
    if (c.remembered) remember(preference::kMidiPort, QString::fromUtf8(c.remembered));
    start();
    EXPECT_TRUE(fake.prompts.shown.empty()) << "nothing is an error at start";

    openMenu();
    processEvents();
    EXPECT_EQ(status(), QString::fromUtf8(c.status));
    EXPECT_EQ(portTexts(), c.ports);
    for (const char* item : {"actionSendMessage", "actionSendAllPages", "actionSendLive"}) {
        EXPECT_EQ(action(item)->isEnabled(), c.sendingPossible) << item;
    }
    inMenu(Qt::Key_Escape);
    openMenu();
    inMenu(Qt::Key_Escape);
    processEvents();
    ASSERT_EQ(fake.prompts.shown.size(), c.boxes);
    if (c.boxes > 0) {
        EXPECT_EQ(fake.prompts.shown[0].title, QStringLiteral("MIDI"));
        EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QStringLiteral("cannot be reached")));
    }
    EXPECT_EQ(window->clientArea()->size(), MainForm::kClientSize);
}

const std::vector<std::string> kTwoPorts{"Sound Canvas 20:0", "Midi Through 14:0"};

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Cases, MidiMenuTest,
    ::testing::Values(
        MenuCase{"PortsListedNoneChosen", kTwoPorts, false, nullptr, "No MIDI port chosen",
                 {"&No port [x]", "&1 Sound Canvas 20:0", "&2 Midi Through 14:0"}, false, 0},
        MenuCase{"NoPortsAtAll", {}, false, nullptr, "No MIDI port chosen",
                 {"&No port [x]", "No MIDI output ports"}, false, 0},
        MenuCase{"NoMidiSystem", kTwoPorts, true, nullptr, "No MIDI system: nothing can be sent",
                 {"&No port [x]"}, false, 1},
        MenuCase{"RememberedPortMissing", kTwoPorts, false, "SC-88Pro 24:0",
                 "SC-88Pro 24:0: missing",
                 {"&No port", "&1 Sound Canvas 20:0", "&2 Midi Through 14:0",
                  "SC-88Pro 24:0 (missing) [x]"},
                 false, 0},
        MenuCase{"RememberedPortThere", kTwoPorts, false, "Sound Canvas 20:0",
                 "Sound Canvas 20:0: ready",
                 {"&No port", "&1 Sound Canvas 20:0 [x]", "&2 Midi Through 14:0"}, true, 0},
        // ALSA numbers its clients afresh in every session.
        MenuCase{"RememberedPortWithOtherNumbers", kTwoPorts, false, "Sound Canvas 24:0",
                 "Sound Canvas 20:0: ready",
                 {"&No port", "&1 Sound Canvas 20:0 [x]", "&2 Midi Through 14:0"}, true, 0},
        MenuCase{"RememberedPortWithoutMidiSystem", kTwoPorts, true, "Sound Canvas 20:0",
                 "No MIDI system: nothing can be sent",
                 {"&No port", "Sound Canvas 20:0 (missing) [x]"}, false, 1},
        MenuCase{"AmpersandInAPortName", {"Rock & Roll:in"}, false, nullptr,
                 "No MIDI port chosen", {"&No port [x]", "&1 Rock && Roll:in"}, false, 0}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(MidiWindowTest, PortListIsRefreshedWhenTheMenuOpens) {
    start();
    openMenu();
    inMenu(Qt::Key_Escape);
    port->names = {"Midi Through 14:0", "Sound Canvas 20:0", "Fast Lane 28:0"};
    openMenu();
    EXPECT_EQ(portTexts(), (QStringList{"&No port [x]", "&1 Midi Through 14:0",
                                        "&2 Sound Canvas 20:0", "&3 Fast Lane 28:0"}));
    inMenu(Qt::Key_3);
    ASSERT_TRUE(QTest::qWaitFor([&] { return midi().device().portOpen(); }, 2000));
    EXPECT_EQ(port->openName, "Fast Lane 28:0");
    EXPECT_EQ(status(), QStringLiteral("Fast Lane 28:0: ready"));
}

TEST_F(MidiWindowTest, PortThatCannotBeOpenedIsReportedAndNotRemembered) {
    start();
    openMenu();
    port->names.clear();  // gone between the listing and the choice
    inMenu(Qt::Key_2);
    processEvents();
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QStringLiteral("There is no MIDI port")));
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QStringLiteral("Midi Through 14:0")));
    EXPECT_FALSE(preference(preference::kMidiPort).isValid());
    EXPECT_FALSE(action("actionSendAllPages")->isEnabled());
}

// The port, the pause and live sending come back in the next run, the pause as the sender
// keeps it; settings.bin is written exactly as without any of it. While the pages wait for
// their turn the menu's title says so, and the caption and client area stay as they are.
TEST_F(MidiWindowTest, PortPauseAndLiveSendingAreRememberedOutsideSettingsBin) {
    start();
    window->close();
    QFile settings(window->SettingsFilePath());
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    const QByteArray withoutMidi = settings.readAll();
    settings.close();

    start();
    chooseFirstPort();
    EXPECT_EQ(preference(preference::kMidiPort).toString(), QStringLiteral("Sound Canvas 20:0"));
    ASSERT_NE(pauseItem(100), nullptr);
    pauseItem(100)->trigger();
    choose(Qt::Key_L);
    EXPECT_TRUE(action("actionSendLive")->isChecked());
    window->close();
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    EXPECT_EQ(settings.readAll(), withoutMidi);
    settings.close();

    start();
    EXPECT_EQ(portsMade, 2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return midi().device().portOpen(); }, 2000));
    EXPECT_EQ(port->openName, "Sound Canvas 20:0");
    EXPECT_TRUE(action("actionSendLive")->isChecked());
    EXPECT_TRUE(pauseItem(100)->isChecked());
    const QString caption = window->windowTitle();
    choose(Qt::Key_A);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return menu()->title() == QStringLiteral("&MIDI (sending...)"); }, 2000));
    EXPECT_EQ(status(), QStringLiteral("Sound Canvas 20:0: sending..."));
    EXPECT_EQ(window->windowTitle(), caption);
    EXPECT_EQ(window->clientArea()->size(), MainForm::kClientSize);
    ASSERT_TRUE(QTest::qWaitFor([&] { return menu()->title() == QStringLiteral("&MIDI"); }, 5000));
    EXPECT_EQ(status(), QStringLiteral("Sound Canvas 20:0: ready"));
    ASSERT_EQ(delivered().size(), 11u);
    for (std::size_t i = 1; i < port->delivered.size(); ++i) {
        const auto& before = port->delivered[i - 1];
        EXPECT_GE(port->delivered[i].at - before.at - device::WireTime(before.bytes.size()), 100ms)
            << "before message " << i;
    }

    choose(Qt::Key_N);
    EXPECT_FALSE(preference(preference::kMidiPort).isValid());
    EXPECT_EQ(status(), QStringLiteral("No MIDI port chosen"));
    EXPECT_FALSE(action("actionSendAllPages")->isEnabled());
    restart();
    EXPECT_EQ(portsMade, 2) << "no port to open at start";
    EXPECT_TRUE(fake.prompts.shown.empty());
}

struct LossCase {
    const char* name;
    device::ProblemKind failure;
    const char* told;
};

void PrintTo(const LossCase& c, std::ostream* os) {
    *os << c.name;
}

class PortLossTest : public MidiWindowTest, public ::testing::WithParamInterface<LossCase> {};

// The port fails part way through the pages: one message box, the menu says so, nothing
// more can be sent, and choosing the port again sends once more.
TEST_P(PortLossTest, IsToldOnceAndThePortCanBeChosenAgain) {
    next.failFrom = 2;
    next.failure = GetParam().failure;
    start();
    chooseFirstPort();
    choose(Qt::Key_A);
    EXPECT_FALSE(midi().device().drain(5000ms));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !fake.prompts.shown.empty(); }, 2000));
    processEvents();
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QString::fromUtf8(GetParam().told)));
    EXPECT_EQ(menu()->title(), QStringLiteral("&MIDI (port lost)"));
    EXPECT_EQ(status(), QStringLiteral("Sound Canvas 20:0: port lost"));
    EXPECT_FALSE(action("actionSendAllPages")->isEnabled());
    key(Qt::Key_F5);
    processEvents();
    EXPECT_EQ(port->delivered.size(), 2u);
    EXPECT_EQ(fake.prompts.shown.size(), 1u);

    port->failFrom.reset();
    chooseFirstPort();
    EXPECT_EQ(menu()->title(), QStringLiteral("&MIDI"));
    key(Qt::Key_F5);
    EXPECT_EQ(delivered().size(), 3u);
    EXPECT_EQ(fake.prompts.shown.size(), 1u);
}

const LossCase kLossCases[] = {
    {"PortGone", device::ProblemKind::PortLost, "has gone away"},
    {"SendRefused", device::ProblemKind::SendFailed, "could not be sent"},
};

INSTANTIATE_TEST_SUITE_P(Cases, PortLossTest, ::testing::ValuesIn(kLossCases),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot::testing
