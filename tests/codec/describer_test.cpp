#include "codec/describer.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

#include "codec/lcd_text.h"
#include "codec/utf8.h"
#include "locale_env.h"

namespace lumidot {
namespace {

constexpr char kUntouched[] = "(untouched)";

// Stands in for the main window: records every call in order and regenerates its output the
// way the window does, with the real message builders.
class RecordingTarget : public SysExTarget {
public:
    enum class Mode { Text, Store, Display };
    std::string pane = kUntouched;
    std::string lcd;
    std::uint8_t page = 1;
    std::array<Page, 256> pages{};
    Mode mode = Mode::Text;
    mutable std::string calls;

    void setSysExOutText(const std::string& text) override {
        record("setSysExOutText");
        pane = text;
    }
    void setLcdText(const std::string& text) override {
        record("setLcdText(" + text + ")");
        lcd = std::string(LeadingUtf8Characters(text, kLcdTextMaxLength));
    }
    std::string lcdText() const override {
        record("lcdText");
        return lcd;
    }
    void txtTextIn_Change() override { regenerate("txtTextIn_Change", Mode::Text); }
    void SetPageNum(std::uint8_t p) override {
        record("SetPageNum(" + std::to_string(p) + ")");
        page = p;
    }
    void SetFDPixelColAll(const Page& pixels) override {
        record("SetFDPixelColAll");
        pages[page] = pixels;
    }
    void selectStoreMode() override { regenerate("selectStoreMode", Mode::Store); }
    void selectDisplayMode() override {
        record("selectDisplayMode");
        mode = Mode::Display;
    }
    void AutoSetSysExText() override { regenerate("AutoSetSysExText", mode); }
    void cmdFDPageDisplay_Click() override {
        record("cmdFDPageDisplay_Click");
        mode = Mode::Display;
        pane = MakeGraphicDisplaySysEx(0);
    }

private:
    void record(const std::string& call) const { calls += (calls.empty() ? "" : " ") + call; }
    void regenerate(const std::string& call, Mode newMode) {
        record(call);
        mode = newMode;
        if (mode == Mode::Text) pane = MakeTextSysEx(lcd, "CP1252");
        if (mode == Mode::Store) pane = MakeGraphicStoreSysEx(pages[page], page);
        if (mode == Mode::Display) pane = MakeGraphicDisplaySysEx(page);
    }
};

struct DescribeRow {
    std::string input, description, pane, calls;
};

void ExpectDescribed(const std::vector<DescribeRow>& rows) {
    for (const DescribeRow& row : rows) {
        SCOPED_TRACE(row.input);
        RecordingTarget target;
        EXPECT_EQ(DescribeSysEx(row.input, target, "CP1252"), row.description);
        EXPECT_EQ(target.pane, row.pane);
        EXPECT_EQ(target.calls, row.calls);
    }
}

const std::string kOut = "setSysExOutText";
const std::string kText = "setLcdText(abc) lcdText txtTextIn_Change";
const std::string kEmptyText = "setLcdText() txtTextIn_Change";
const std::string kAbcFrame = "F0 41 10 45 12 10 00 00 61 62 63 4A F7";
const std::string kNoTextFrame = "F0 41 10 45 12 10 00 00 70 F7";
const std::string kNoText = "Display text with no length (INVALID).";
const std::string kTooShort = "(Unrecognised SysEx - message is too short to be GS)";
const std::string kAZ =
    "41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 51 52 53 54 55 56 57 58 "
    "59 5A 30 31 32 33 34 35 ";

TEST(DescribeSysExTest, WorkedExamples) {
    ExpectDescribed(
        {{"F0 F7", "(No SysEx)", "F0 F7", kOut},
         {"F0 41 10 F7", kTooShort, "F0 41 10 F7 ", kOut},
         {kAbcFrame, "Display text: abc", kAbcFrame, kText},
         {"F0 41 10 45 12 10 20 00 05 4B F7", "Graphic: Display page 5",
          "F0 41 10 45 12 10 20 00 05 4B F7", "SetPageNum(5) selectDisplayMode AutoSetSysExText"},
         {"F0 41 10 45 12 10 20 01 0A 45 F7", "Graphic: Set duration to 4800 milliseconds",
          kUntouched, ""},
         {"F0 41 10 42 12 40 00 7F 00 00 F7",
          "(Unrecognised SysEx - GS checksum changed from 00 to 41)",
          "F0 41 10 42 12 40 00 7F 00 41 F7", kOut},
         {"F0 41 10 42 12 40 00 7F 00 41 F7",
          "(Unrecognised SysEx - GS checksum was valid; kept as 41)",
          "F0 41 10 42 12 40 00 7F 00 41 F7", kOut},
         {"F0 43 10 4C 00 00 7E 00 F7", "(Unrecognised SysEx - not GS)",
          "F0 43 10 4C 00 00 7E 00 F7 ", kOut}});
}

TEST(DescribeSysExTest, EdgeCases) {
    ExpectDescribed(
        {{"", "(No SysEx)", "F0 F7", kOut},
         {"   ", "(No SysEx)", "F0 F7", kOut},
         {"41", "(No SysEx)", "F0 F7", kOut},
         {"F0 F0 F0", "(No SysEx)", "F0 F7", kOut},
         {"F0 F0 41 10 45 12 10 20 00 00 50 F7", "Graphic: Display no page",
          "F0 41 10 45 12 10 20 00 00 50 F7", "cmdFDPageDisplay_Click"},
         {"f0f0f0 41 10 45 12 10 20 00 03", "Graphic: Display page 3",
          "F0 41 10 45 12 10 20 00 03 4D F7", "SetPageNum(3) selectDisplayMode AutoSetSysExText"},
         {"41 10 45 12 10 20 00", kTooShort, "F0 41 10 45 12 10 20 00 ", kOut},
         // Eight bytes reaching the GS check: the checksum is byte 6, the body bytes 4 and 5.
         {"41 10 42 12 40 00 7F 00", "(Unrecognised SysEx - GS checksum changed from 7F to 40)",
          "F0 41 10 42 12 40 00 40 F7", kOut},
         {"F0 41 10 45 12 10 00 00 01 1F 61 62 63 4A F7", "Display text: abc", kAbcFrame, kText},
         {"F0 41 10 45 12 10 00 00 61 01 78 16 F7", "Display text: a\x01x",
          "F0 41 10 45 12 10 00 00 61 01 78 16 F7", "setLcdText(a\x01x) lcdText txtTextIn_Change"},
         {"41 10 45 12 10 00 00 61 62 63 4A", "Display text: abc", kAbcFrame, kText},
         {"F0 43 10 16 12 10 00 00 61 62 63 4A F7", "Display text: abc", kAbcFrame, kText},
         {"F0 41 10 45 12 10 00 00 43 61 66 E9 7D F7", "Display text: Café",
          "F0 41 10 45 12 10 00 00 43 61 66 E9 7D F7", "setLcdText(Café) lcdText txtTextIn_Change"},
         {"F0 41 10 45 12 10 00 00 " + kAZ + "36 37 38 39 00 F7",
          "Display text: ABCDEFGHIJKLMNOPQRSTUVWXYZ012345",
          "F0 41 10 45 12 10 00 00 " + kAZ + "62 F7",
          "setLcdText(ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789) lcdText txtTextIn_Change"},
         {kNoTextFrame, kNoText, kNoTextFrame, kEmptyText},
         {"F0 41 10 45 12 10 00 00 01 02 6D F7", kNoText, kNoTextFrame, kEmptyText},
         {"41 10 45 12 10 00 00 61", kNoText, kNoTextFrame, kEmptyText},
         {"F0 41 10 45 12 10 03 20 00 00 F7", "Graphic: Store page INVALID", kUntouched, ""},
         // A store message too short to hold a picture changes nothing.
         {"F0 41 10 45 12 10 01 00 10 5F F7", "Graphic: Store page INVALID", kUntouched, ""},
         {"F0 41 10 45 12 10 06 00 00 6A F7",
          "(Unrecognised SysEx - GS checksum was valid; kept as 6A)",
          "F0 41 10 45 12 10 06 00 00 6A F7", kOut},
         {"F0 41 10 45 12 10 1F 00 00 51 F7",
          "(Unrecognised SysEx - GS checksum was valid; kept as 51)",
          "F0 41 10 45 12 10 1F 00 00 51 F7", kOut},
         {"F0 41 10 45 12 10 00 01 41 00 F7",
          "(Unrecognised SysEx - GS checksum changed from 00 to 2E)",
          "F0 41 10 45 12 10 00 01 41 2E F7", kOut},
         {"F0 41 10 45 12 10 20 02 00 4E F7",
          "(Unrecognised SysEx - GS checksum was valid; kept as 4E)",
          "F0 41 10 45 12 10 20 02 00 4E F7", kOut},
         {"F0 41 10 45 12 10 20 00 0B 45 F7", "Graphic: Display page INVALID", kUntouched, ""},
         {"F0 41 10 45 12 10 20 01 00 4F F7", "Graphic: Set duration to 0 milliseconds", kUntouched,
          ""},
         {"F0 41 10 45 12 10 20 01 7F 50 F7", "Graphic: Set duration to 60960 milliseconds",
          kUntouched, ""},
         {"F0 41 10 16 12 40 00 7F 00 41 F7", "(Unrecognised SysEx - not GS)",
          "F0 41 10 16 12 40 00 7F 00 41 F7 ", kOut},
         // Device and command IDs are rebuilt as 10 and 12 whatever was received.
         {"F0 41 7F 42 11 40 00 7F 00 41 F7",
          "(Unrecognised SysEx - GS checksum was valid; kept as 41)",
          "F0 41 10 42 12 40 00 7F 00 41 F7", kOut}});
}

TEST(DescribeSysExStoreTest, StoresPictureInItsPageWhateverTheChecksum) {
    const char* addresses[] = {"10 01 00", "10 01 40", "10 02 00", "10 02 40", "10 03 00",
                               "10 03 40", "10 04 00", "10 04 40", "10 05 00", "10 05 40"};
    std::mt19937 random(99);
    for (std::uint8_t page = 1; page <= 10; ++page) {
        SCOPED_TRACE(addresses[page - 1]);
        Page picture;
        for (bool& pixel : picture) pixel = (random() & 1) != 0;
        const std::string input = std::string("F0 41 10 45 12 ") + addresses[page - 1] + " " +
                                  BytesToHexText(PackPage(picture)) + "00 F7";
        RecordingTarget target;
        const std::string number = std::to_string(page);
        EXPECT_EQ(DescribeSysEx(input, target, "CP1252"), "Graphic: Store page " + number);
        EXPECT_EQ(target.calls, "SetPageNum(" + number + ") SetFDPixelColAll selectStoreMode");
        EXPECT_EQ(target.pages[page], picture);
        EXPECT_EQ(target.pane, MakeGraphicStoreSysEx(picture, page));
    }
}

TEST(DescribeSysExLocaleTest, DecodesTextInProcessCodePage) {
    const LocaleEnv env("el_GR.UTF-8", nullptr, nullptr);
    RecordingTarget target;
    EXPECT_EQ(DescribeSysEx("41 10 45 12 10 00 00 D9 00 F7", target), "Display text: Ω");
}

// Whatever arrives, the describer answers with a line and never reads past its input.
TEST(DescribeSysExRobustnessTest, SurvivesRandomAndTruncatedMessages) {
    std::mt19937 random(12345);
    const std::vector<std::string> heads{"41 10 45 12 10 00 00 ",       "41 10 45 12 10 03 40 ",
                                         "41 10 45 12 10 20 00 ",       "41 10 42 12 40 00 7F ",
                                         "F0 F0 41 10 45 12 10 05 00 ", ""};
    RecordingTarget target;
    for (int i = 0; i < 20000; ++i) {
        std::string input = heads[random() % heads.size()];
        const int tail = static_cast<int>(random() % 90);
        for (int j = 0; j < tail; ++j) input += HexByte(static_cast<std::uint8_t>(random()));
        // Cut anywhere, even inside a byte.
        input.resize(random() % (input.size() + 1));
        EXPECT_FALSE(DescribeSysEx(input, target, i % 2 ? "CP932" : "CP1252").empty()) << input;
    }
}

}  // namespace
}  // namespace lumidot
