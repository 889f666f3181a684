#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <string>

#include "storage/text_helpers.h"

namespace lumidot {
namespace {

using namespace std::string_literals;

// Paths in a folder of real things: empty files, folders, a pipe and a link.
TEST(FileExistsTest, TrueOnlyForOrdinaryVisibleFiles) {
    const QTemporaryDir folder;
    const QDir dir(folder.path());
    ASSERT_TRUE(dir.mkpath("folder") && dir.mkpath(".config"));
    for (const char* name : {"memory.txt", ".hidden", ".config/settings.bin"}) {
        ASSERT_TRUE(QFile(dir.filePath(name)).open(QIODevice::WriteOnly)) << name;
    }
    ASSERT_EQ(mkfifo(QFile::encodeName(dir.filePath("pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(dir.filePath("memory.txt"), dir.filePath("link-to-file")));
    for (const char* name : {"memory.txt", ".config/settings.bin", "link-to-file"}) {
        EXPECT_TRUE(FileExists(dir.filePath(name))) << name;
    }
    for (const char* name : {"memory.txt/", "folder", ".hidden", "missing.txt", "pipe"}) {
        EXPECT_FALSE(FileExists(dir.filePath(name))) << name;
    }
    EXPECT_FALSE(FileExists(QString()));
}

// Bytes and the text they decode to; every byte counts, malformed ones become U+FFFD, and
// text without U+FFFD encodes back to the same bytes.
class Utf8Test : public ::testing::TestWithParam<std::pair<std::string, std::u16string>> {};

TEST_P(Utf8Test, DecodesEveryByteAndEncodesBack) {
    const QByteArray bytes = QByteArray::fromStdString(GetParam().first);
    const QString text = QStringView(GetParam().second).toString();
    EXPECT_EQ(FromUTF8(bytes), text);
    if (text.contains(QChar(0xFFFD))) return;  // malformed bytes do not come back
    EXPECT_EQ(ToUTF8(text), bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Utf8Test,
    ::testing::Values(std::pair{"A\xC3\xA9"s, u"A\u00E9"s},
                      std::pair{"\xF0\x9F\x98\x80"s, u"\xD83D\xDE00"s},  // a surrogate pair
                      std::pair{"\xFF"s, u"\uFFFD"s}, std::pair{"A\xC3"s, u"A\uFFFD"s},
                      std::pair{"A\0B"s, u"A\0B"s},
                      std::pair{"\xEF\xBB\xBF\x41"s, u"\uFEFFA"s}));  // the byte-order mark kept

TEST(Utf8FailureTest, AnEmptyArrayRaisesTheRoutinesError) {
    try {
        FromUTF8(QByteArray());
        FAIL() << "no error raised";
    } catch (const RoutineError& error) {
        EXPECT_EQ(error.number(), -2147171566);
        EXPECT_EQ(error.source(), "FromUTF8");
        EXPECT_EQ(error.description(), "Failed to decode string, system error 87");
        EXPECT_STREQ(error.what(), "Failed to decode string, system error 87");
    }
}

}  // namespace
}  // namespace lumidot
