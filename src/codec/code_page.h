// The LCD text's 8-bit characters: the code page Windows would use as its ANSI code page
// for the user's locale, converted with iconv.
#pragma once

#include <string>
#include <vector>

namespace lumidot {

// The iconv name of the ANSI code page for a POSIX locale name such as "ja_JP.UTF-8",
// "pl_PL" or "C" ("CP932", "CP1250", "CP1252", ...).
std::string AnsiCodePageForLocale(const std::string& localeName);

// The code page for this process's locale, from LC_ALL, LC_CTYPE or LANG (first one set).
std::string SystemAnsiCodePage();

// UTF-8 text to bytes of the code page. A character the code page cannot hold becomes '?'.
std::string Utf8ToAnsi(const std::string& utf8, const std::string& codePage);

// UTF-8 text to bytes, one string per character, in order: lets callers cut at character
// boundaries.
std::vector<std::string> Utf8ToAnsiPerCharacter(const std::string& utf8,
                                                const std::string& codePage);

// Bytes of the code page to UTF-8 text. Bytes that are not valid in the code page never
// make the conversion fail.
std::string AnsiToUtf8(const std::string& bytes, const std::string& codePage);

}  // namespace lumidot
