// libFuzzer: any memory.txt and settings.bin load without a crash, a hang or a read outside
// them, and what is then saved loads back and saves to the very same bytes. Some inputs are
// spelled as good pages written in another form (line ends, byte-order mark, UTF-16); those
// must load all ten pages and lose nothing.
#include <QByteArray>
#include <QString>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "codec/describer.h"
#include "codec/graphic_page.h"
#include "storage/memory_file.h"
#include "storage/settings_records.h"
#include "support/ten_pages.h"

namespace {

using lumidot::Page;

using lumidot::testing::TenPages;

struct Files {
    QByteArray memory;
    QByteArray settings;
    bool operator==(const Files&) const = default;
};

// Loads both files into a fresh window as the program does and saves it.
Files LoadAndSave(const Files& files, lumidot::MemoryLoadReport* report = nullptr) {
    TenPages window;
    const lumidot::MemoryLoadReport loaded =
        lumidot::LoadMemory(files.memory, false, window, "CP1252");
    if (report) *report = loaded;
    // The fields' designed texts, then each as read; a field holds five characters.
    lumidot::LayoutTexts texts{QString(), QString(), QStringLiteral(" ")};
    const auto read = lumidot::ReadSettingsBytes(files.settings);
    for (std::size_t i = 0; i < texts.size() && read[i]; ++i) texts[i] = read[i]->left(5);
    return {lumidot::BuildMemoryBytes(window.pages), lumidot::BuildSettingsBytes(texts)};
}

QByteArray Utf16(const QByteArray& text, bool bigEndian, bool mark) {
    QByteArray bytes;
    if (mark) bytes += bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (char c : text) bytes += bigEndian ? QByteArray(1, '\0') + c : QByteArray(1, c) + '\0';
    return bytes;
}

// memory.txt as written for pages made of the input's bits, then put into another form.
QByteArray GoodPagesInAnotherForm(const std::uint8_t* data, std::size_t size, std::uint8_t form,
                                  std::array<Page, lumidot::kLastPage>& pages) {
    for (std::size_t bit = 0; bit < pages.size() * lumidot::kPagePixels && bit / 8 < size; ++bit) {
        pages[bit / lumidot::kPagePixels][bit % lumidot::kPagePixels] =
            (data[bit / 8] >> (bit % 8)) & 1;
    }
    QByteArray text = lumidot::BuildMemoryBytes(pages);
    switch (form % 3) {
        case 1:
            text.replace("\r\n", "\n");
            break;
        case 2:
            text.replace("\r\n", "\r");
            break;
    }
    switch ((form / 3) % 6) {
        case 1:
            return "\xEF\xBB\xBF" + text;
        case 2:
            return Utf16(text, false, true);
        case 3:
            return Utf16(text, true, true);
        case 4:
            return Utf16(text, false, false);
        case 5:
            return Utf16(text, true, false);
    }
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::uint8_t mode = data[0];
    const std::size_t settingsSize = std::min<std::size_t>(data[1], size - 2);
    Files files;
    files.settings =
        QByteArray(reinterpret_cast<const char*>(data + 2), static_cast<qsizetype>(settingsSize));
    const std::uint8_t* rest = data + 2 + settingsSize;
    const std::size_t restSize = size - 2 - settingsSize;

    std::array<Page, lumidot::kLastPage> pages{};
    const bool good = mode & 1;
    files.memory =
        good ? GoodPagesInAnotherForm(rest, restSize, mode >> 1, pages)
             : QByteArray(reinterpret_cast<const char*>(rest), static_cast<qsizetype>(restSize));

    lumidot::MemoryLoadReport report;
    const Files saved = LoadAndSave(files, &report);
    if (good && (report.losesSomething() || saved.memory != lumidot::BuildMemoryBytes(pages))) {
        std::abort();  // a good memory.txt in another form lost a page
    }
    lumidot::MemoryLoadReport again;
    if (LoadAndSave(saved, &again) != saved || again.losesSomething()) std::abort();
    return 0;
}
