// libFuzzer: the text steps of reading the clipboard take any text and any layout.
#include <QString>
#include <cstddef>
#include <cstdint>

#include "decode/decode_text.h"
#include "decode/hex_digits.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    // The first three bytes pick the lengths of prefix, suffix and separator.
    const int prefix = data[0] % 6, suffix = data[1] % 6, separator = data[2] % 6;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data + 3),
                                           static_cast<qsizetype>(size - 3));
    const QString p = text.left(prefix), s = text.mid(prefix, suffix),
                  e = text.mid(prefix + suffix, separator);
    const QString digits = lumidot::ReadHexDigits(text, p, s, e);
    if (lumidot::CheckHexDigits(digits) == lumidot::HexCheck::Ok) {
        const lumidot::HexDigits read(digits, QString(), 0, 0, false);
        lumidot::MessageReader messages(read);
        for (std::string message; messages.next(message);) {
            lumidot::SpaceHexPairs(QString::fromStdString(message));
        }
    }
    lumidot::CollapseRepeats(text, e);
    lumidot::NormaliseWhitespace(text, p, s, e);
    return 0;
}
