// Sending from the real window through a recording port: the output pane's messages on F5,
// all ten pages and the display of page 1, and live sending of every regenerated message.
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <initializer_list>

#include "codec/lcd_text.h"
#include "editor/grid_input.h"
#include "midi/midi_window_fixture.h"

namespace lumidot::testing {
namespace {

Page PixelsOn(std::initializer_list<int> indexes) {
    Page page{};
    for (int i : indexes) page[i] = true;
    return page;
}

Bytes Store(int page, const Page& pixels) {
    return Hex(MakeGraphicStoreSysEx(pixels, static_cast<std::uint8_t>(page)));
}
Bytes Display(int page) {
    return Hex(MakeGraphicDisplaySysEx(static_cast<std::uint8_t>(page)));
}

class SendingTest : public MidiWindowTest {
protected:
    void SetUp() override {
        MidiWindowTest::SetUp();
        start();
        chooseFirstPort();
    }
    Bytes Text(const char* text) { return Hex(MakeTextSysEx(text, window->model().codePage())); }
    void press(const char* button) {
        QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
    }
    // Waits until the last message out is this one.
    ::testing::AssertionResult lastSentIs(const Bytes& expected) {
        const std::vector<Bytes> sent = delivered();
        if (!sent.empty() && sent.back() == expected) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure()
               << sent.size() << " sent, the last not the one expected";
    }
};

// The clipboard text of messages in the layout with the suffix h, one message a line.
QString WithSuffixH(const std::vector<std::string>& messages) {
    QString text;
    for (const std::string& message : messages) {
        if (!text.isEmpty()) text += QStringLiteral("\r\n");
        text += QString::fromStdString(message).replace(QLatin1Char(' '), QLatin1String("h ")) +
                QLatin1Char('h');
    }
    return text;
}

// Each step fills the output pane; F5 then sends exactly its messages, in order.
TEST_F(SendingTest, F5SendsEachMessageOfTheOutputPane) {
    const struct {
        const char* step;
        std::function<void()> act;
        std::vector<Bytes> expected;
    } steps[] = {
        {"store of the open page",
         [&] { window->gridInput().FDPixelMouseMove(39, 0, 1); },
         {Store(1, PixelsOn({39}))}},
        {"display none", [&] { press("cmdFDPageDisplay"); }, {Display(0)}},
        // A decoding result lists every message, two of them for the same page: all go.
        {"decoding result in order",
         [&] {
             ui().txtHexSuffix->setText(QStringLiteral("h"));
             fake.clipboard.text =
                 WithSuffixH({MakeGraphicStoreSysEx(PixelsOn({1}), 1), MakeGraphicDisplaySysEx(3),
                              MakeGraphicStoreSysEx(PixelsOn({2}), 1)});
             QTest::mouseClick(ui().cmdSysExDecode, Qt::LeftButton);
         },
         {Store(1, PixelsOn({1})), Display(3), Store(1, PixelsOn({2}))}},
        // Plain ASCII: the same bytes in every code page.
        {"text laid out with prefix and commas",
         [&] {
             ui().txtHexSuffix->clear();
             ui().txtHexPrefix->setText(QStringLiteral("0x"));
             ui().txtHexSep->setText(QStringLiteral(","));
             QTest::keyClicks(ui().txtTextIn, QStringLiteral("Hi"));
         },
         {Hex(MakeTextSysEx("Hi", "CP1252"))}},
    };
    std::size_t before = 0;
    for (const auto& step : steps) {
        SCOPED_TRACE(step.step);
        step.act();
        processEvents();
        key(Qt::Key_F5);
        const std::vector<Bytes> sent = delivered();
        ASSERT_GE(sent.size(), before);
        EXPECT_EQ(std::vector<Bytes>(sent.begin() + before, sent.end()), step.expected);
        before = sent.size();
    }
    EXPECT_TRUE(fake.prompts.shown.empty());

    // A pane without a whole message says so and sends nothing.
    window->SetSysExOutText(QStringLiteral("F0 41 10"));
    key(Qt::Key_F5);
    EXPECT_EQ(delivered().size(), before);
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].title, QStringLiteral("Send message"));
}

// Every page as the user sees it, the open page's drawing not yet stored included, in page
// order, then page 1 displayed.
TEST_F(SendingTest, AllPagesAreTenStoresThenTheDisplayOfPage1) {
    for (int page = 10; page >= 4; --page) {
        ui().udPageNum->setValue(page);
        window->gridInput().FDPixelMouseMove(page * 7, 0, 1);
        window->gridInput().FDPixelMouseMove(page * 7 + 1, 0, 1);
    }
    choose(Qt::Key_A);
    std::vector<Bytes> expected;
    for (int page = 1; page <= 10; ++page) {
        expected.push_back(Store(page, page < 4 ? Page{} : PixelsOn({page * 7, page * 7 + 1})));
    }
    expected.push_back(Display(1));
    EXPECT_EQ(delivered(), expected);
}

// Each step regenerates the output; with live sending on its message goes out.
TEST_F(SendingTest, LiveSendingFollowsEveryRegeneration) {
    window->gridInput().FDPixelMouseMove(5, 0, 1);
    EXPECT_TRUE(delivered().empty()) << "live sending is off";
    choose(Qt::Key_L);
    ASSERT_TRUE(action("actionSendLive")->isChecked());

    const struct {
        const char* step;
        std::function<void()> act;
        std::function<Bytes()> expected;
    } steps[] = {
        {"paint", [&] { window->gridInput().FDPixelMouseMove(17, 0, 1); },
         [] {
             return Store(1, PixelsOn({5, 17}));
         }},
        {"erase", [&] { window->gridInput().FDPixelMouseMove(5, 0, 2); },
         [] { return Store(1, PixelsOn({17})); }},
        {"shift right", [&] { press("cmdFDShiftRight"); }, [] { return Store(1, PixelsOn({18})); }},
        {"type", [&] { QTest::keyClicks(ui().txtTextIn, QStringLiteral("Yo")); },
         [&] { return Text("Yo"); }},
        {"page 2", [&] { ui().udPageNum->setValue(2); }, [] { return Store(2, Page{}); }},
        {"display mode", [&] { press("optSEGDisplay"); }, [] { return Display(2); }},
        {"display none", [&] { press("cmdFDPageDisplay"); }, [] { return Display(0); }},
    };
    for (const auto& step : steps) {
        step.act();
        EXPECT_TRUE(lastSentIs(step.expected())) << step.step;
    }

    choose(Qt::Key_L);
    const std::size_t before = delivered().size();
    window->gridInput().FDPixelMouseMove(100, 0, 1);
    EXPECT_EQ(delivered().size(), before) << "live sending is off again";
}

// Painting far faster than the module takes messages: only as many go as it can take, and
// the last is the final picture.
TEST_F(SendingTest, LivePaintingCatchesUpWithTheNewestPicture) {
    choose(Qt::Key_L);
    Page picture{};
    for (int cell = 0; cell < 60; ++cell) {
        window->gridInput().FDPixelMouseMove(cell * 4, 0, 1);
        picture[cell * 4] = true;
    }
    const std::vector<Bytes> sent = delivered();
    ASSERT_FALSE(sent.empty());
    EXPECT_LT(sent.size(), 30u);
    EXPECT_EQ(sent.back(), Store(1, picture));
}

}  // namespace
}  // namespace lumidot::testing
