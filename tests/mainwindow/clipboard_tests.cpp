// The retrying clipboard reader and writer against a clipboard that is held for a while.
#include <gtest/gtest.h>

#include "mainwindow/clipboard_access.h"
#include "support/fakes.h"

namespace lumidot::testing {
namespace {

struct RetryRow {
    const char* name;
    int failures;       // calls that fail before the clipboard is free
    int attempts;       // attempts the routine makes
    bool reportsError;  // the critical box after the tenth failure
};

class RetryTest : public ::testing::TestWithParam<RetryRow> {
protected:
    FakePlatform fake;
};

TEST_P(RetryTest, ReaderRetriesAndReports) {
    const RetryRow& row = GetParam();
    fake.clipboard.text = QStringLiteral("F0 F7");
    fake.clipboard.failuresLeft = row.failures;
    const QString text = GetClipboardText(fake.platform);
    EXPECT_EQ(fake.clipboard.getCalls, row.attempts);
    EXPECT_EQ(fake.sleeper.sleeps, std::vector<int>(row.attempts - 1, 15));
    EXPECT_EQ(text, row.reportsError ? QString() : QStringLiteral("F0 F7"));
    ASSERT_EQ(fake.prompts.shown.size(), row.reportsError ? 1u : 0u);
    if (row.reportsError) {
        const ShownMessage& box = fake.prompts.shown.front();
        EXPECT_EQ(box.title, QStringLiteral("Error reading from clipboard!"));
        EXPECT_EQ(box.prompt,
                  QStringLiteral("Failed to open clipboard for reading from\r\n(tried 10 times)"));
        EXPECT_EQ(box.icon, Prompts::Icon::Critical);
        EXPECT_EQ(box.buttons, Prompts::Buttons::Ok);
    }
}

TEST_P(RetryTest, WriterClearsThenSetsAndRetriesAsAWhole) {
    const RetryRow& row = GetParam();
    // A writer's attempt is two calls; hold the clipboard for the same number of attempts.
    fake.clipboard.failuresLeft = row.failures * 2;
    SetClipboardText(fake.platform, QStringLiteral("F0 41 F7"));
    EXPECT_EQ(fake.clipboard.clearCalls, row.attempts);
    EXPECT_EQ(fake.clipboard.setCalls, row.attempts) << "set is tried even when clear failed";
    EXPECT_EQ(fake.sleeper.sleeps.size(), static_cast<size_t>(row.attempts - 1));
    EXPECT_EQ(fake.clipboard.text, row.reportsError ? QString() : QStringLiteral("F0 41 F7"));
    ASSERT_EQ(fake.prompts.shown.size(), row.reportsError ? 1u : 0u);
    if (row.reportsError) {
        EXPECT_EQ(fake.prompts.shown.front().title, QStringLiteral("Error writing to clipboard!"));
        EXPECT_EQ(fake.prompts.shown.front().prompt,
                  QStringLiteral("Failed to open clipboard for writing to\r\n(tried 10 times)"));
    }
}

INSTANTIATE_TEST_SUITE_P(Clipboard, RetryTest,
                         ::testing::Values(RetryRow{"Free", 0, 1, false},
                                           RetryRow{"HeldBriefly", 3, 4, false},
                                           RetryRow{"FreeJustInTime", 9, 10, false},
                                           RetryRow{"HeldThroughout", 100, 10, true}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ClipboardTest, NoTextOnTheClipboardReadsAsEmptyWithoutMessage) {
    FakePlatform fake;
    fake.clipboard.holdsText = false;
    fake.clipboard.text = QStringLiteral("a picture");
    EXPECT_EQ(GetClipboardText(fake.platform), QString());
    EXPECT_TRUE(fake.prompts.shown.empty());
}

// The production clipboard where the platform keeps it in this process (the offscreen one
// here, which may also offer an X11 interface for its drawing): a write reads back.
TEST(ClipboardTest, SystemClipboardOfAnInProcessPlatformReadsBackWhatItWrote) {
    SystemClipboard clipboard;
    const QString text = QStringLiteral("F0 41 10 45 12 10 00 00 48 28 F7\r\nF0 F7");
    ASSERT_TRUE(clipboard.setText(text));
    QString read;
    ASSERT_TRUE(clipboard.getText(read));
    EXPECT_EQ(read, text);
}

}  // namespace
}  // namespace lumidot::testing
