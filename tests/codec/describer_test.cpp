#include "codec/describer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "codec/lcd_text.h"
#include "codec/utf8.h"

namespace lumidot {
namespace {

using namespace std::string_literals;

constexpr char kUntouched[] = "(untouched)";

// Stands in for the main window: records every call in order and regenerates the output pane
// the way the window does, with the real message builders.
class RecordingTarget : public SysExTarget {
public:
    std::string pane = kUntouched, lcd;
    mutable std::string calls;
    std::uint8_t page = 1;
    Page pages[kLastPage + 1]{};
    // The Greek code page, where D9 is an omega.
    std::string codePage = "CP1253";

    void setSysExOutText(const std::string& text) override { SetPane("setSysExOutText", text); }
    void setLcdText(const std::string& text) override {
        lcd = LeadingUtf8Characters(Log("setLcdText(" + text + ")", text), kLcdTextMaxLength);
    }
    std::string lcdText() const override { return Log("lcdText", lcd); }
    void txtTextIn_Change() override { SetPane("txtTextIn_Change", MakeTextSysEx(lcd, codePage)); }
    void SetPageNum(std::uint8_t p) override {
        page = Log("SetPageNum(" + std::to_string(p) + ")", p);
    }
    void SetFDPixelColAll(const Page& p) override { pages[page] = Log("SetFDPixelColAll", p); }
    void selectStoreMode() override {
        SetPane("selectStoreMode", MakeGraphicStoreSysEx(pages[page], page));
    }
    void selectDisplayMode() override { Log("selectDisplayMode", 0); }
    // The display mode's output: the calls show that the mode was selected first.
    void AutoSetSysExText() override { SetPane("AutoSetSysExText", MakeGraphicDisplaySysEx(page)); }
    void cmdFDPageDisplay_Click() override {
        SetPane("cmdFDPageDisplay_Click", MakeGraphicDisplaySysEx(0));
    }

private:
    // Records a call and passes its value on.
    template <typename T>
    T Log(const std::string& call, T value) const {
        calls += (calls.empty() ? "" : " ") + call;
        return value;
    }
    void SetPane(const std::string& call, const std::string& text) { pane = Log(call, text); }
};

const std::string kAbcFrame = "F0 41 10 45 12 10 00 00 61 62 63 4A F7";
const std::string kAbc = "setLcdText(abc) lcdText txtTextIn_Change";
const std::string kTooShort = "(Unrecognised SysEx - message is too short to be GS)";
const std::string kGS = "(Unrecognised SysEx - GS checksum ";
const std::string kAZ =
    "41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 51 52 53 54 55 56 57 58 "
    "59 5A 30 31 32 33 34 35 ";

// Description, output pane and the window calls made, in order. A row that names no calls
// expects none when the pane is left alone, else the pane written once.
TEST(DescribeSysExTest, DescribesAndTakesOverEachMessage) {
    const struct {
        std::string input, description, pane = kUntouched, calls = "";
    } rows[] = {
        {"F0 F7", "(No SysEx)", "F0 F7"},
        {"F0 41 10 F7", kTooShort, "F0 41 10 F7 "},
        {kAbcFrame, "Display text: abc", kAbcFrame, kAbc},
        {"F0 41 10 45 12 10 20 00 05 4B F7", "Graphic: Display page 5",
         "F0 41 10 45 12 10 20 00 05 4B F7", "SetPageNum(5) selectDisplayMode AutoSetSysExText"},
        {"F0 41 10 45 12 10 20 01 0A 45 F7", "Graphic: Set duration to 4800 milliseconds"},
        {"F0 41 10 42 12 40 00 7F 00 00 F7", kGS + "changed from 00 to 41)",
         "F0 41 10 42 12 40 00 7F 00 41 F7"},
        {"F0 41 10 42 12 40 00 7F 00 41 F7", kGS + "was valid; kept as 41)",
         "F0 41 10 42 12 40 00 7F 00 41 F7"},
        {"F0 43 10 4C 00 00 7E 00 F7", "(Unrecognised SysEx - not GS)",
         "F0 43 10 4C 00 00 7E 00 F7 "},
        {"41", "(No SysEx)", "F0 F7"},
        {"F0 F0 F0", "(No SysEx)", "F0 F7"},
        {"F0 F0 41 10 45 12 10 20 00 00 50 F7", "Graphic: Display no page",
         "F0 41 10 45 12 10 20 00 00 50 F7", "cmdFDPageDisplay_Click"},
        {"41 10 45 12 10 20 00", kTooShort, "F0 41 10 45 12 10 20 00 "},
        // Eight bytes reach the GS check: the checksum is byte 6, the body bytes 4 and 5; the
        // device and command IDs are rebuilt as 10 and 12.
        {"41 7F 42 11 40 00 7F 00", kGS + "changed from 7F to 40)", "F0 41 10 42 12 40 00 40 F7"},
        // Control bytes in front of the text are skipped, those inside it kept.
        {"F0 41 10 45 12 10 00 00 01 1F D9 00 78 00 F7", "Display text: Ω\0x"s,
         "F0 41 10 45 12 10 00 00 D9 00 78 1F F7", "setLcdText(Ω\0x) lcdText txtTextIn_Change"s},
        // Without F7 the last byte is the checksum; the manufacturer and model are not looked at.
        {"43 10 16 12 10 00 00 61 62 63 4A", "Display text: abc", kAbcFrame, kAbc},
        {"F0 41 10 45 12 10 00 00 " + kAZ + "36 37 38 39 00 F7",
         "Display text: ABCDEFGHIJKLMNOPQRSTUVWXYZ012345",
         "F0 41 10 45 12 10 00 00 " + kAZ + "62 F7",
         "setLcdText(ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789) lcdText txtTextIn_Change"},
        {"F0 41 10 45 12 10 00 00 01 02 6D F7", "Display text with no length (INVALID).",
         "F0 41 10 45 12 10 00 00 70 F7", "setLcdText() txtTextIn_Change"},
        // 10 03 20 names no page, even with a whole picture after it.
        {"F0 41 10 45 12 10 03 20 " + BytesToHexText(ByteArray(64)) + "00 F7",
         "Graphic: Store page INVALID"},
        // A store message too short to hold a picture changes nothing.
        {"F0 41 10 45 12 10 01 00 10 5F F7", "Graphic: Store page INVALID"},
        {"F0 41 10 45 12 10 06 00 00 6A F7", kGS + "was valid; kept as 6A)",
         "F0 41 10 45 12 10 06 00 00 6A F7"},
        {"F0 41 10 45 12 10 00 01 41 00 F7", kGS + "changed from 00 to 2E)",
         "F0 41 10 45 12 10 00 01 41 2E F7"},
        {"F0 41 10 45 12 10 20 02 00 4E F7", kGS + "was valid; kept as 4E)",
         "F0 41 10 45 12 10 20 02 00 4E F7"},
        {"F0 41 10 45 12 10 20 00 0B 45 F7", "Graphic: Display page INVALID"},
        {"F0 41 10 45 12 10 20 01 00 4F F7", "Graphic: Set duration to 0 milliseconds"},
        {"F0 41 10 45 12 10 20 01 7F 50 F7", "Graphic: Set duration to 60960 milliseconds"},
        {"F0 41 10 16 12 40 00 7F 00 41 F7", "(Unrecognised SysEx - not GS)",
         "F0 41 10 16 12 40 00 7F 00 41 F7 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.input);
        RecordingTarget target;
        EXPECT_EQ(DescribeSysEx(row.input, target, target.codePage), row.description);
        EXPECT_EQ(target.pane, row.pane);
        const bool paneWritten = row.pane != kUntouched;
        EXPECT_EQ(target.calls, row.calls.empty() && paneWritten ? "setSysExOutText" : row.calls);
    }
}

// The picture lands in the page its address names, whatever the checksum received.
TEST(DescribeSysExTest, StoresEachPictureInItsPage) {
    const char* addresses[] = {"10 01 00", "10 01 40", "10 02 00", "10 02 40", "10 03 00",
                               "10 03 40", "10 04 00", "10 04 40", "10 05 00", "10 05 40"};
    std::mt19937 random(99);
    for (int page = 1; page <= kLastPage; ++page) {
        Page picture;
        for (bool& pixel : picture) pixel = (random() & 1) != 0;
        ByteArray body;
        HexTextToBytes(addresses[page - 1], body);
        for (std::uint8_t b : PackPage(picture)) body.push_back(b);
        RecordingTarget target;
        const std::string number = std::to_string(page);
        EXPECT_EQ(DescribeSysEx("F0 41 10 45 12 " + BytesToHexText(body) + "00 F7", target, target.codePage),
                  "Graphic: Store page " + number);
        EXPECT_EQ(target.calls, "SetPageNum(" + number + ") SetFDPixelColAll selectStoreMode");
        EXPECT_EQ(target.pages[page], picture);
        EXPECT_EQ(target.pane, MakeGSSysExText(body, kModelDisplay));
    }
}

// Whatever arrives, the describer answers with a line and never reads past its input.
TEST(DescribeSysExTest, SurvivesRandomAndTruncatedMessages) {
    const char* heads[] = {"41 10 45 12 10 00 00 ",       "41 10 45 12 10 03 40 ",
                           "41 10 45 12 10 20 00 ",       "41 10 42 12 40 00 7F ",
                           "F0 F0 41 10 45 12 10 05 00 ", ""};
    std::mt19937 rng(12345);
    RecordingTarget target;
    for (int i = 0; i < 20000; ++i) {
        std::string input = heads[rng() % 6];
        for (int j = rng() % 90; j > 0; --j) input += HexByte(static_cast<std::uint8_t>(rng()));
        // Cut anywhere, even inside a byte.
        input.resize(rng() % (input.size() + 1));
        EXPECT_FALSE(DescribeSysEx(input, target, i % 2 ? "CP932" : "CP1252").empty()) << input;
    }
}

}  // namespace
}  // namespace lumidot
