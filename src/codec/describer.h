// Describes one received System Exclusive message in a line of text and takes what it
// recognises over into the main window.
#pragma once

#include <cstdint>
#include <string>

#include "codec/graphic_page.h"

namespace lumidot {

// What the describer needs of the main window. Texts are UTF-8.
class SysExTarget {
public:
    virtual ~SysExTarget() = default;

    // Puts exactly this text into the output pane (no layout, no automatic copy).
    virtual void setSysExOutText(const std::string& text) = 0;
    // The LCD text field: keeps at most its first 32 characters.
    virtual void setLcdText(const std::string& text) = 0;
    virtual std::string lcdText() const = 0;
    // Selects the text mode and regenerates the output.
    virtual void txtTextIn_Change() = 0;
    virtual void SetPageNum(std::uint8_t page) = 0;
    virtual void SetFDPixelColAll(const Page& pixels) = 0;
    // Selecting a mode runs its click handler, which regenerates the output.
    virtual void selectStoreMode() = 0;
    virtual void selectDisplayMode() = 0;
    virtual void AutoSetSysExText() = 0;
    virtual void cmdFDPageDisplay_Click() = 0;
};

// hexText: one message, with any number of leading F0 bytes or none; spaces are ignored and
// every other character is a hex digit. An LCD text is decoded from the given iconv code page.
// Returns the one-line description.
std::string DescribeSysEx(const std::string& hexText, SysExTarget& target,
                          const std::string& codePage);

}  // namespace lumidot
