// Messages from a file are described exactly as a decoding run through the window describes
// them from the clipboard: the same lines, the same cleaned messages, the same pages, text
// and mode taken over; only the place in the file is added to each line.
#include <QLineEdit>
#include <random>

#include "codec/graphic_page.h"
#include "decode/frm_decoded.h"
#include "decode/message_list.h"
#include "mainwindow/read_only_text_box.h"
#include "mainwindow/window_model.h"
#include "support/main_form_fixture.h"
#include "ui_frm_decoded.h"

namespace lumidot::testing {
namespace {

// Messages of every kind a file may hold, each F0 ... F7 with nothing but data in between.
std::vector<ByteArray> MixedMessages(int count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<ByteArray> messages;
    for (int i = 0; i < count; ++i) {
        std::string hex;
        switch (random() % 6) {
            case 0: {
                Page page{};
                for (bool& pixel : page) pixel = random() % 3 == 0;
                hex = MakeGraphicStoreSysEx(page, static_cast<std::uint8_t>(1 + random() % 10));
                break;
            }
            case 1:
                hex = "F0 41 10 45 12 10 00 00 " + HexByte(0x41 + random() % 26) + " 62 63 4A F7";
                break;
            case 2:
                hex = "F0 41 10 45 12 10 20 00 " + HexByte(random() % 13) + " 00 F7";
                break;
            case 3:
                hex = "F0 41 10 45 12 10 03 20 00 F7";
                break;  // invalid page
            case 4:
                hex = "F0 41 10 45 12 10 20 01 0A 45 F7";
                break;  // a duration
            default:
                hex = "F0 41 10 42 12 40 00 7F " + HexByte(random() % 128) + " F7";
                break;
        }
        ByteArray bytes;
        HexTextToBytes(hex, bytes);
        messages.push_back(bytes);
    }
    return messages;
}

class MessageListTest : public MainFormTest, public ::testing::WithParamInterface<ByteLayout> {
protected:
    // Decodes the messages from the clipboard through the real window, in the layout.
    void decodeThroughTheWindow(const std::vector<ByteArray>& messages) {
        fake.prompts.onModal = [this](QDialog& dialog) {
            results = static_cast<frmDecoded&>(dialog).form().txtDecodedOut->text();
            dialog.accept();
        };
        QStringList lines;
        for (const ByteArray& m : messages) {
            lines << QString::fromStdString(BytesToHexText(m)).trimmed();
        }
        ui().txtHexPrefix->setText(GetParam().prefix);
        ui().txtHexSep->setText(GetParam().separator);
        fake.clipboard.text = LayOutBytes(lines.join(QLatin1Char(' ')), GetParam());
        QTest::mouseClick(ui().cmdSysExDecode, Qt::LeftButton);
    }

    QString results;
};

TEST_P(MessageListTest, SameLinesCleanedMessagesAndTakeOverAsTheRun) {
    const std::vector<ByteArray> messages = MixedMessages(1500, 5);
    decodeThroughTheWindow(messages);
    ASSERT_EQ(fake.prompts.modalRuns, 1);

    WindowModel model(window->model().codePage());
    model.setPrefix(GetParam().prefix);
    model.setSeparator(GetParam().separator);
    MessageListDescription list(model);
    for (const ByteArray& message : messages) list.add(message, MessagePlace{});

    EXPECT_EQ(list.count(), 1500);
    EXPECT_EQ(list.results(), results);
    EXPECT_EQ(list.cleaned(), pane());
    const WindowModel& shown = window->model();
    EXPECT_EQ(model.pages().all(), shown.pages().all());
    EXPECT_EQ(model.pages().current(), shown.pages().current());
    EXPECT_EQ(model.lcdText(), shown.lcdText());
    EXPECT_EQ(model.mode(), shown.mode());
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, MessageListTest,
    ::testing::Values(ByteLayout{}, ByteLayout{QStringLiteral("0x"), {}, QStringLiteral(",")}));

TEST(MessagePlaceTest, LinesGiveTimeAndTrackOrOffset) {
    WindowModel model("CP1252");
    MessageListDescription list(model);
    ByteArray display5;
    HexTextToBytes("F0 41 10 45 12 10 20 00 05 4B F7", display5);
    list.add(display5, MessagePlace::AtTime(1.25, 2));
    list.add(display5, MessagePlace::AtOffset(74));
    list.add(display5, MessagePlace{});
    for (int i = 3; i < 10; ++i) list.add(display5, MessagePlace::AtTime(6000.0004, 1));
    EXPECT_EQ(list.line(0), QStringLiteral(" #1. [00:01.250 track 2] Graphic: Display page 5"));
    EXPECT_EQ(list.line(1), QStringLiteral(" #2. [offset 74] Graphic: Display page 5"));
    EXPECT_EQ(list.line(2), QStringLiteral(" #3. Graphic: Display page 5"));
    EXPECT_EQ(list.line(9), QStringLiteral("#10. [100:00.000 track 1] Graphic: Display page 5"));
    EXPECT_TRUE(list.results().endsWith(list.line(9) + QStringLiteral("\r\n")));
}

struct TimeRow {
    double seconds;
    const char* text;
};

class TimeTextTest : public ::testing::TestWithParam<TimeRow> {};

TEST_P(TimeTextTest, RoundsToTheMillisecond) {
    EXPECT_EQ(TimeText(GetParam().seconds), QLatin1String(GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(Times, TimeTextTest,
                         ::testing::Values(TimeRow{0, "00:00.000"}, TimeRow{0.0005, "00:00.001"},
                                           TimeRow{0.0004, "00:00.000"},
                                           TimeRow{59.9996, "01:00.000"},
                                           TimeRow{65.25, "01:05.250"},
                                           TimeRow{3599.999, "59:59.999"},
                                           TimeRow{6000, "100:00.000"}));

}  // namespace
}  // namespace lumidot::testing
