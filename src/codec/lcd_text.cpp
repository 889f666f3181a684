#include "codec/lcd_text.h"

#include "codec/code_page.h"
#include "codec/gs_message.h"

namespace lumidot {

std::string MakeTextSysEx(const std::string& text, const std::string& codePage) {
    ByteArray body{0x10, 0x00, 0x00};
    // The LCD takes at most 32 bytes. In a code page where a character may need two bytes,
    // whole characters are taken in order for as long as their bytes fit, so the message
    // never ends with half a character; where every character is one byte this is simply
    // the first 32 characters.
    std::size_t dataBytes = 0;
    int characters = 0;
    for (const std::string& character : Utf8ToAnsiPerCharacter(text, codePage)) {
        if (characters == kLcdTextMaxLength || dataBytes + character.size() > kLcdTextMaxLength) {
            break;
        }
        for (char b : character) AppendByte(body, static_cast<std::uint8_t>(b));
        dataBytes += character.size();
        ++characters;
    }
    return MakeGSSysExText(body, kModelDisplay);
}

}  // namespace lumidot
