// What loading memory.txt keeps and what it would lose, through the real describer.
#include <gtest/gtest.h>

#include <map>

#include "storage/memory_file.h"
#include "storage/storage_messages.h"
#include "support/ten_pages.h"

namespace lumidot {
namespace {

using testing::TenPages;

Page Dot(int index) {
    Page page{};
    page[static_cast<std::size_t>(index)] = true;
    return page;
}

std::string Store(int page, const Page& pixels = Page{}) {
    return MakeGraphicStoreSysEx(pixels, static_cast<std::uint8_t>(page));
}

QByteArray Lines(const std::vector<std::string>& lines) {
    QByteArray bytes;
    for (const std::string& line : lines) bytes += QByteArray::fromStdString(line) + "\r\n";
    return bytes;
}

std::vector<std::string> TenStores() {
    std::vector<std::string> lines;
    for (int page = 1; page <= 10; ++page) lines.push_back(Store(page, Dot(page)));
    return lines;
}

const std::string kText = "F0 41 10 45 12 10 00 00 48 69 3F F7";

std::string WithWrongChecksum(std::string line) {
    const std::size_t checksum = line.size() - 5;  // "cs F7"
    line.replace(checksum, 2, line.compare(checksum, 2, "00") == 0 ? "01" : "00");
    return line;
}

// The first `kept` lines of memory.txt as written (page k with a dot at pixel k), some
// replaced, with more lines after them.
struct ReportRow {
    const char* name;
    std::size_t kept;
    std::map<std::size_t, std::string> replaced;  // by index from 0
    std::vector<std::string> added;
    std::vector<int> unused;
};
void PrintTo(const ReportRow& row, std::ostream* out) {
    *out << row.name;
}

class MemoryReportTest : public ::testing::TestWithParam<ReportRow> {};

TEST_P(MemoryReportTest, NamesEveryLineASaveWouldLose) {
    const ReportRow& row = GetParam();
    std::vector<std::string> lines = TenStores();
    lines.resize(row.kept);
    for (const auto& [index, line] : row.replaced) lines.at(index) = line;
    lines.insert(lines.end(), row.added.begin(), row.added.end());
    TenPages window;
    const MemoryLoadReport report = LoadMemory(Lines(lines), false, window, "CP1252");
    EXPECT_EQ(report.unusedLines, row.unused);
    EXPECT_EQ(report.losesSomething(), !row.unused.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Files, MemoryReportTest,
    ::testing::Values(
        ReportRow{"TenPages", 10, {}, {}, {}}, ReportRow{"FewerPages", 2, {}, {}, {}},
        ReportRow{"TextLineAmongThem", 10, {{2, kText}}, {}, {3}},
        ReportRow{"NotAMessage", 10, {{0, "not a message"}}, {}, {1}},
        ReportRow{"InvalidStoreAddress", 10, {{4, "F0 41 10 45 12 10 03 20 00 F7"}}, {}, {5}},
        ReportRow{"BlankLinesHoldNothing", 10, {{1, "  "}}, {"", "\t"}, {}},
        ReportRow{"LinesAfterTheTenth", 10, {}, {Store(2), "", kText}, {11, 13}},
        ReportRow{"SamePageTwiceWithAnotherPicture", 10, {{1, Store(1, Dot(99))}}, {}, {1}},
        ReportRow{"SamePageTwiceAlike", 10, {{1, Store(1, Dot(1))}}, {}, {}},
        ReportRow{"StoreWithAWrongChecksumIsStillTaken",
                  10,
                  {{6, WithWrongChecksum(Store(7, Dot(7)))}},
                  {},
                  {}}),
    [](const auto& info) { return std::string(info.param.name); });

struct NumbersRow {
    std::vector<int> lines;
    const char* text;
};

class LineNumbersTest : public ::testing::TestWithParam<NumbersRow> {};

TEST_P(LineNumbersTest, ReadsAsEnglish) {
    EXPECT_EQ(LineNumbersText(GetParam().lines).toStdString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Lists, LineNumbersTest,
    ::testing::Values(NumbersRow{{3}, "line 3"}, NumbersRow{{3, 5}, "lines 3 and 5"},
                      NumbersRow{{2, 4, 5, 6, 11}, "lines 2, 4 to 6 and 11"},
                      NumbersRow{{1, 3, 5, 7, 9, 11, 13, 15}, "lines 1, 3, 5, 7, 9 and more"}));

}  // namespace
}  // namespace lumidot
