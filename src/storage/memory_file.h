// memory.txt: the ten pages as the store messages that rebuild them, one per line.
#pragma once

#include <QByteArray>
#include <array>
#include <string>
#include <vector>

#include "codec/describer.h"
#include "codec/graphic_page.h"

namespace lumidot {

// Lines of memory.txt without their line ends. Lines may end in CR LF, LF or CR; a UTF-8
// byte-order mark is skipped; UTF-16 text (either byte order, with a byte-order mark or
// recognisable by its NUL bytes) is read as the text it holds. An ending line break does
// not start another line.
std::vector<std::string> MemoryLines(const QByteArray& bytes);

// What loading memory.txt could not carry into the pages, so that saving would lose it.
struct MemoryLoadReport {
    // Numbers (from 1) of lines that no saved page will hold: among the first ten, a line
    // that is not a store-page message the describer takes, or whose page a later line
    // stores again with another picture; after the tenth, every line that is not blank.
    std::vector<int> unusedLines;
    bool cutShort = false;  // the file went on beyond what was read
    bool losesSomething() const { return cutShort || !unusedLines.empty(); }
};

// Hands the first ten lines to the describer, which applies them to target as it applies
// a message from the clipboard (a text in codePage). cutShort says that bytes holds only the
// start of the file.
MemoryLoadReport LoadMemory(const QByteArray& bytes, bool cutShort, SysExTarget& target,
                            const std::string& codePage);

// memory.txt as it is written: line k the store message of page k, each ending in CR LF.
QByteArray BuildMemoryBytes(const std::array<Page, kLastPage>& pages);

}  // namespace lumidot
