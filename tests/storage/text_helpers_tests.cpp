#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>
#include <optional>

#include "storage/text_helpers.h"

namespace lumidot {
namespace {

// One folder of real things for every FileExists row.
class FileExistsTest
    : public ::testing::TestWithParam<std::tuple<const char*, std::optional<const char*>, bool>> {
protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<QTemporaryDir>();
        ASSERT_TRUE(folder->isValid());
        const QDir dir(folder->path());
        writeFile(dir.filePath("memory.txt"), "F0 F7\r\n");
        writeFile(dir.filePath("empty.bin"), "");
        writeFile(dir.filePath(".hidden"), "x");
        ASSERT_TRUE(dir.mkpath("folder"));
        ASSERT_TRUE(dir.mkpath(".config"));
        writeFile(dir.filePath(".config/settings.bin"), "x");
        ASSERT_EQ(mkfifo(QFile::encodeName(dir.filePath("pipe")).constData(), 0600), 0);
        ASSERT_TRUE(QFile::link(dir.filePath("memory.txt"), dir.filePath("link-to-file")));
        ASSERT_TRUE(QFile::link(dir.filePath("folder"), dir.filePath("link-to-folder")));
        ASSERT_TRUE(QFile::link(dir.filePath("missing.txt"), dir.filePath("dangling")));
    }
    static void TearDownTestSuite() { folder.reset(); }

    static void writeFile(const QString& path, const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static inline std::unique_ptr<QTemporaryDir> folder;
};

TEST_P(FileExistsTest, TellsOrdinaryVisibleFilesFromEverythingElse) {
    const auto& [label, relative, expected] = GetParam();
    const QString path = relative ? QDir(folder->path()).filePath(*relative) : QString();
    EXPECT_EQ(FileExists(path), expected) << label << ": " << path.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Paths, FileExistsTest,
    ::testing::Values(std::make_tuple("empty path", std::nullopt, false),
                      std::make_tuple("existing file", "memory.txt", true),
                      std::make_tuple("empty file", "empty.bin", true),
                      std::make_tuple("existing file with a trailing slash", "memory.txt/", false),
                      std::make_tuple("existing folder", "folder", false),
                      std::make_tuple("existing folder with a trailing slash", "folder/", false),
                      std::make_tuple("hidden file", ".hidden", false),
                      std::make_tuple("ordinary file inside a hidden folder",
                                      ".config/settings.bin", true),
                      std::make_tuple("missing file", "missing.txt", false),
                      std::make_tuple("named pipe", "pipe", false),
                      std::make_tuple("link to a file", "link-to-file", true),
                      std::make_tuple("link to a folder", "link-to-folder", false),
                      std::make_tuple("link to nothing", "dangling", false),
                      std::make_tuple("character device", "/dev/null", false)));

QString Units(std::initializer_list<char16_t> units) {
    QString text;
    for (char16_t unit : units) text.append(QChar(unit));
    return text;
}

struct Utf8Row {
    const char* label;
    QByteArray bytes;
    QString text;
};

class FromUtf8Test : public ::testing::TestWithParam<Utf8Row> {};

TEST_P(FromUtf8Test, DecodesEveryByte) {
    const Utf8Row& row = GetParam();
    EXPECT_EQ(FromUTF8(row.bytes), row.text) << row.label;
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, FromUtf8Test,
    ::testing::Values(Utf8Row{"ASCII", QByteArray("\x41\x42\x43"), "ABC"},
                      Utf8Row{"two-byte character", QByteArray("\xC3\xA9"), Units({0x00E9})},
                      Utf8Row{"four-byte character", QByteArray("\xF0\x9F\x98\x80"),
                              Units({0xD83D, 0xDE00})},
                      Utf8Row{"lone FF", QByteArray("\xFF"), Units({0xFFFD})},
                      Utf8Row{"cut-off sequence", QByteArray("A\xC3"), Units({'A', 0xFFFD})},
                      Utf8Row{"NUL inside", QByteArray("A\0B", 3), Units({'A', 0, 'B'})},
                      Utf8Row{"byte-order mark kept",
                              QByteArray("\xEF\xBB\xBF"
                                         "A"),
                              Units({0xFEFF, 'A'})}));

class ToUtf8Test : public ::testing::TestWithParam<Utf8Row> {};

TEST_P(ToUtf8Test, EncodesAndDecodesBack) {
    const Utf8Row& row = GetParam();
    EXPECT_EQ(ToUTF8(row.text), row.bytes) << row.label;
    EXPECT_EQ(FromUTF8(ToUTF8(row.text)), row.text) << row.label;
}

INSTANTIATE_TEST_SUITE_P(Texts, ToUtf8Test,
                         ::testing::Values(Utf8Row{"ASCII", QByteArray("\x41\x42\x43"), "ABC"},
                                           Utf8Row{"two-byte character", QByteArray("\xC3\xA9"),
                                                   Units({0x00E9})},
                                           Utf8Row{"surrogate pair", QByteArray("\xF0\x9F\x98\x80"),
                                                   Units({0xD83D, 0xDE00})}));

TEST(FromUtf8Failure, AnEmptyArrayRaisesTheRoutinesError) {
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
