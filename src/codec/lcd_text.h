// The LCD text message: address 10 00 00, data the text's 8-bit characters.
#pragma once

#include <string>

namespace lumidot {

// Most data bytes (and characters) the LCD text message carries.
constexpr int kLcdTextMaxLength = 32;

// Frame text of the LCD text message for UTF-8 text, in the given iconv code page (the
// program picks it once, from the locale, with SystemAnsiCodePage).
std::string MakeTextSysEx(const std::string& text, const std::string& codePage);

}  // namespace lumidot
