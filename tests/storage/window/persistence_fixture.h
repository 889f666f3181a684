// A started main window whose files live in a temporary program folder and a user data
// folder of the test's own, with helpers to read and write them.
#pragma once

#include <sys/stat.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <random>

#include "codec/graphic_page.h"
#include "support/main_form_fixture.h"
#include "support/qt_printers.h"

namespace lumidot::testing {

inline QByteArray ReadAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void WriteAll(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    file.write(bytes);
}

inline QByteArray StoreLine(const Page& page, int number) {
    return QByteArray::fromStdString(
        MakeGraphicStoreSysEx(page, static_cast<std::uint8_t>(number)));
}

inline Page RandomPage(std::mt19937& random) {
    Page page{};
    for (bool& pixel : page) pixel = (random() & 1) != 0;
    return page;
}

inline Page DotPage(int index) {
    Page page{};
    page[static_cast<std::size_t>(index)] = true;
    return page;
}

// memory.txt as the program writes it, page k with a dot at pixel k.
inline QByteArray DottedMemory() {
    QByteArray bytes;
    for (int page = 1; page <= 10; ++page) bytes += StoreLine(DotPage(page), page) + "\r\n";
    return bytes;
}

// settings.bin as the program writes it: prefix, suffix and separator, each as a 32-bit
// little-endian length and its UTF-8 bytes.
inline QByteArray Settings(const QByteArray& prefix, const QByteArray& suffix,
                           const QByteArray& separator) {
    QByteArray bytes;
    for (const QByteArray& field : {prefix, suffix, separator}) {
        const quint32 size = quint32(field.size());
        for (int shift = 0; shift < 32; shift += 8) bytes.append(char(size >> shift & 0xff));
        bytes += field;
    }
    return bytes;
}

inline const QByteArray kDefaultSettings = Settings("", "", " ");

inline void Chmod(const QString& path, mode_t mode) {
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
}

class PersistenceTest : public MainFormTest {
protected:
    // Each test gets a user data folder of its own, so that tests running side by side
    // never see or remove each other's files there.
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        QCoreApplication::setApplicationName(QStringLiteral("lumidot-test-%1-%2")
                                                 .arg(test->test_suite_name(), test->name())
                                                 .replace(QLatin1Char('/'), QLatin1Char('-')));
        removeUserFolder();
        MainFormTest::SetUp();
    }
    void TearDown() override {
        MainFormTest::TearDown();
        ::chmod(QFile::encodeName(folder.path()).constData(), 0700);
        removeUserFolder();
    }

    QString file(const char* name) const { return folder.path() + QLatin1Char('/') + name; }
    QString userFolder() const {
        return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    }
    QString userFile(const char* name) const { return userFolder() + QLatin1Char('/') + name; }
    void removeUserFolder() {
        QDir(userFolder()).removeRecursively();
        QFile::remove(userFolder());
    }
    // Closes the window as the user would, which saves, and starts a new one.
    void restart() {
        window->close();
        start();
    }
    void close() { window->close(); }
    // Closes the window, writes a file beside the program and starts a new one.
    void startWith(const char* name, const QByteArray& bytes) {
        window.reset();
        WriteAll(file(name), bytes);
        start();
    }
    // Starts a new window whose program folder is programFolder.
    void startIn(const QString& programFolder) {
        window.reset();
        window = std::make_unique<MainForm>(fake.platform, programFolder);
        window->Form_Load();
    }
    // Every page of the open window, opened in turn; page 1 is open again afterwards.
    std::array<Page, 10> pages() {
        std::array<Page, 10> all{};
        for (int number = 1; number <= 10; ++number) {
            window->SetPageNum(static_cast<std::uint8_t>(number));
            all[static_cast<std::size_t>(number - 1)] = window->FDPixels();
        }
        window->SetPageNum(1);
        return all;
    }
    // The pages of DottedMemory, less those listed.
    static std::array<Page, 10> dottedPages(const std::vector<int>& blank = {}) {
        std::array<Page, 10> all{};
        for (int number = 1; number <= 10; ++number) {
            if (std::find(blank.begin(), blank.end(), number) == blank.end()) {
                all[number - 1] = DotPage(number);
            }
        }
        return all;
    }
    // The texts of the message boxes shown so far, and forgets them.
    QStringList takePrompts() {
        QStringList prompts;
        for (const ShownMessage& message : fake.prompts.shown) prompts << message.prompt;
        fake.prompts.shown.clear();
        return prompts;
    }
};

}  // namespace lumidot::testing
