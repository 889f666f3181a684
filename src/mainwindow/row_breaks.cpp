#include "mainwindow/row_breaks.h"

#include <QChar>
#include <string_view>

namespace lumidot {
namespace {

// Characters that stand alone for wrapping: a row may end before or after each of them.
bool IsIdeographic(char32_t c) {
    return (c >= 0x2E80 && c <= 0x30FF) ||    // radicals, CJK punctuation, kana
           (c >= 0x3400 && c <= 0x4DBF) ||    // ideographs, extension A
           (c >= 0x4E00 && c <= 0x9FFF) ||    // unified ideographs
           (c >= 0xF900 && c <= 0xFAFF) ||    // compatibility ideographs
           (c >= 0xFF00 && c <= 0xFFEF) ||    // full-width forms
           (c >= 0x1F300 && c <= 0x1FAFF) ||  // pictographs and emoji
           (c >= 0x20000 && c <= 0x3FFFD);    // ideographs of the supplementary planes
}

// Closing brackets, stops, small kana and the like: never at the start of a row.
bool NoBreakBefore(char32_t c) {
    static constexpr std::u16string_view kClosing =
        u"!),.:;?]}\u3001\u3002\u3005\u3009\u300B\u300D\u300F\u3011\u3015\u3017\u3019\u301B"
        u"\u301E\u301F\u303B\u309B\u309C\u309D\u309E\u30A0\u30FB\u30FC\u30FD\u30FE"
        u"\u3041\u3043\u3045\u3047\u3049\u3063\u3083\u3085\u3087\u308E\u3095\u3096"
        u"\u30A1\u30A3\u30A5\u30A7\u30A9\u30C3\u30E3\u30E5\u30E7\u30EE\u30F5\u30F6"
        u"\uFF01\uFF09\uFF0C\uFF0E\uFF1A\uFF1B\uFF1F\uFF3D\uFF5D\uFF60\uFF61\uFF63\uFF64"
        u"\uFF65\uFF9E\uFF9F";
    return c < 0x10000 && kClosing.find(static_cast<char16_t>(c)) != std::u16string_view::npos;
}

// Opening brackets: never at the end of a row.
bool NoBreakAfter(char32_t c) {
    static constexpr std::u16string_view kOpening =
        u"([{\u3008\u300A\u300C\u300E\u3010\u3014\u3016\u3018\u301A\u301D\uFF08\uFF3B\uFF5B"
        u"\uFF5F\uFF62";
    return c < 0x10000 && kOpening.find(static_cast<char16_t>(c)) != std::u16string_view::npos;
}

}  // namespace

bool IsBreakSpace(char16_t c) {
    if (c == u' ' || c == u'\t') return true;
    if (c < 0x80 || c == 0xA0 || c == 0x2007 || c == 0x202F) return false;
    return QChar::isSpace(c);
}

bool MayBreakBetween(char32_t before, char32_t after) {
    return (IsIdeographic(before) || IsIdeographic(after)) && !NoBreakBefore(after) &&
           !NoBreakAfter(before);
}

}  // namespace lumidot
