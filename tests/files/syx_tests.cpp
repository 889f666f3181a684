// The .syx reader: messages split at their ends, and every byte that belongs to no complete
// message reported where it stands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/file_bytes.h"
#include "files/syx_file.h"

namespace lumidot::testing {
namespace {

struct SyxRow {
    const char* name;
    const char* file;
    std::vector<std::string> messages;  // "offset: bytes"
    std::vector<std::string> problems;  // "offset: text"
};

class SyxReaderTest : public ::testing::TestWithParam<SyxRow> {};

TEST_P(SyxReaderTest, SplitsAndReports) {
    const SyxRow& row = GetParam();
    const SyxContents contents = ReadSyx(Hex(row.file));
    std::vector<std::string> messages, problems;
    for (const SyxMessage& m : contents.messages) {
        messages.push_back(std::to_string(m.offset) + ": " + HexOf(m.bytes));
    }
    for (const FileProblem& p : contents.problems) {
        problems.push_back(std::to_string(p.offset) + ": " + p.text);
    }
    EXPECT_EQ(messages, row.messages);
    EXPECT_EQ(problems, row.problems);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Files, SyxReaderTest,
    ::testing::Values(
        SyxRow{"OneMessage", "F0 41 10 45 12 10 20 00 05 4B F7",
               {"0: F0 41 10 45 12 10 20 00 05 4B F7"}, {}},
        SyxRow{"BackToBack", "F0 7E 7F 09 01 F7 F0 F7 F0 43 10 F7",
               {"0: F0 7E 7F 09 01 F7", "6: F0 F7", "8: F0 43 10 F7"}, {}},
        SyxRow{"StrayBytesBetween", "F0 01 F7 00 00 7F F0 02 F7", {"0: F0 01 F7", "6: F0 02 F7"},
               {"3: 3 bytes outside any message"}},
        SyxRow{"StrayBytesAtStartAndEnd", "0D F0 01 F7 0A", {"1: F0 01 F7"},
               {"0: 1 byte outside any message", "4: 1 byte outside any message"}},
        SyxRow{"LoneF7IsOutside", "F7 F0 01 F7", {"1: F0 01 F7"}, {"0: 1 byte outside any message"}},
        SyxRow{"CutOffByTheEnd", "F0 01 F7 F0 41 10", {"0: F0 01 F7"},
               {"3: message cut off by the end of the file (3 bytes, no F7)"}},
        SyxRow{"CutOffByTheNextMessage", "F0 41 10 F0 02 F7", {"3: F0 02 F7"},
               {"0: message cut off by byte F0 at offset 3 (no F7)"}},
        SyxRow{"CutOffByAnotherStatus", "F0 41 90 3C 40", {},
               {"0: message cut off by byte 90 at offset 2 (no F7)", "2: 3 bytes outside any message",
                "0: the file holds no message"}},
        SyxRow{"NoMessageAtAll", "41 42", {}, {"0: 2 bytes outside any message", "0: the file holds no message"}},
        SyxRow{"Empty", "", {}, {"0: the file is empty"}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

}  // namespace
}  // namespace lumidot::testing
