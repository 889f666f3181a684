// libFuzzer: any hex text handed to the describer is described without a crash, a hang or
// a read outside the message.
#include <cstddef>
#include <cstdint>
#include <string>

#include "codec/describer.h"
#include "codec/graphic_page.h"
#include "codec/lcd_text.h"

namespace {

// A window that does what the describer expects of it, in memory.
class MemoryWindow : public lumidot::SysExTarget {
public:
    void setSysExOutText(const std::string& text) override { pane = text; }
    void setLcdText(const std::string& text) override { lcd = text.substr(0, 128); }
    std::string lcdText() const override { return lcd; }
    void txtTextIn_Change() override { pane = lumidot::MakeTextSysEx(lcd, "CP1252"); }
    void SetPageNum(std::uint8_t value) override { page = value; }
    void SetFDPixelColAll(const lumidot::Page& value) override { pixels = value; }
    void selectStoreMode() override { AutoSetSysExText(); }
    void selectDisplayMode() override {}
    void AutoSetSysExText() override { pane = lumidot::MakeGraphicStoreSysEx(pixels, page); }
    void cmdFDPageDisplay_Click() override { pane = lumidot::MakeGraphicDisplaySysEx(0); }

    std::string pane, lcd;
    std::uint8_t page = 1;
    lumidot::Page pixels{};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Half the inputs as they come, half spelled as hex so that real messages are reached.
    static const char digits[] = "0123456789ABCDEF";
    std::string text;
    if (size > 0 && (data[0] & 1)) {
        for (std::size_t i = 1; i < size; ++i) {
            text += digits[data[i] >> 4];
            text += digits[data[i] & 15];
            text += ' ';
        }
    } else {
        text.assign(reinterpret_cast<const char*>(data), size);
    }
    MemoryWindow window;
    lumidot::DescribeSysEx(text, window, "CP1252");
    lumidot::DescribeSysEx(text, window, "CP932");
    return 0;
}
