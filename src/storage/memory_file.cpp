#include "storage/memory_file.h"

#include <QStringDecoder>
#include <algorithm>
#include <optional>

namespace lumidot {
namespace {

// How far into the file the NUL pattern of BOM-less UTF-16 is looked for. memory.txt is
// plain ASCII, so in UTF-16 every other byte of it is NUL.
constexpr qsizetype kUtf16Sniff = 256;

std::optional<QStringConverter::Encoding> Utf16WithoutMark(const QByteArray& bytes) {
    const qsizetype checked = std::min(bytes.size(), kUtf16Sniff) & ~qsizetype{1};
    if (checked < 2) return std::nullopt;
    bool little = true;
    bool big = true;
    for (qsizetype i = 0; i < checked; i += 2) {
        const bool evenNul = bytes[i] == '\0';
        const bool oddNul = bytes[i + 1] == '\0';
        little = little && !evenNul && oddNul;
        big = big && evenNul && !oddNul;
    }
    if (little) return QStringConverter::Utf16LE;
    if (big) return QStringConverter::Utf16BE;
    return std::nullopt;
}

// The file's text as 8-bit characters: UTF-16 is turned into UTF-8, anything else is kept
// byte for byte (without a UTF-8 byte-order mark), so that a damaged line reaches the
// describer as it stands in the file.
QByteArray EightBitText(const QByteArray& bytes) {
    std::optional<QStringConverter::Encoding> utf16;
    qsizetype mark = 0;
    if (bytes.startsWith("\xEF\xBB\xBF")) return bytes.mid(3);
    if (bytes.startsWith("\xFF\xFE")) {
        utf16 = QStringConverter::Utf16LE;
        mark = 2;
    } else if (bytes.startsWith("\xFE\xFF")) {
        utf16 = QStringConverter::Utf16BE;
        mark = 2;
    } else {
        utf16 = Utf16WithoutMark(bytes);
    }
    if (!utf16) return bytes;
    QStringDecoder decoder(*utf16, QStringConverter::Flag::Stateless);
    const QString text = decoder.decode(QByteArrayView(bytes).sliced(mark));
    return text.toUtf8();
}

bool IsBlank(const std::string& line) {
    return line.find_first_not_of(" \t") == std::string::npos;
}

// Passes every call on to the real target and notes where a store message put its picture.
class StoreWatch : public SysExTarget {
public:
    explicit StoreWatch(SysExTarget& target) : target_(target) {}

    bool stored = false;
    int storedPage = 0;
    Page storedPixels{};

    void setSysExOutText(const std::string& text) override { target_.setSysExOutText(text); }
    void setLcdText(const std::string& text) override { target_.setLcdText(text); }
    std::string lcdText() const override { return target_.lcdText(); }
    void txtTextIn_Change() override { target_.txtTextIn_Change(); }
    void SetPageNum(std::uint8_t page) override {
        page_ = page;
        target_.SetPageNum(page);
    }
    void SetFDPixelColAll(const Page& pixels) override {
        stored = true;
        storedPage = page_;
        storedPixels = pixels;
        target_.SetFDPixelColAll(pixels);
    }
    void selectStoreMode() override { target_.selectStoreMode(); }
    void selectDisplayMode() override { target_.selectDisplayMode(); }
    void AutoSetSysExText() override { target_.AutoSetSysExText(); }
    void cmdFDPageDisplay_Click() override { target_.cmdFDPageDisplay_Click(); }

private:
    SysExTarget& target_;
    int page_ = 0;
};

}  // namespace

std::vector<std::string> MemoryLines(const QByteArray& bytes) {
    const QByteArray text = EightBitText(bytes);
    std::vector<std::string> lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') continue;
        lines.emplace_back(text.constData() + start, static_cast<std::size_t>(i - start));
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (start < text.size()) {
        lines.emplace_back(text.constData() + start, static_cast<std::size_t>(text.size() - start));
    }
    return lines;
}

MemoryLoadReport LoadMemory(const QByteArray& bytes, bool cutShort, SysExTarget& target,
                            const std::string& codePage) {
    MemoryLoadReport report;
    report.cutShort = cutShort;
    const std::vector<std::string> lines = MemoryLines(bytes);

    struct Stored {
        int line;
        Page pixels;
    };
    std::array<std::optional<Stored>, kLastPage + 1> byPage;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int number = static_cast<int>(i) + 1;
        if (number > kLastPage) {
            if (!IsBlank(lines[i])) report.unusedLines.push_back(number);
            continue;
        }
        StoreWatch watch(target);
        DescribeSysEx(lines[i], watch, codePage);
        if (!watch.stored) {
            // A blank line holds nothing that could be lost.
            if (!IsBlank(lines[i])) report.unusedLines.push_back(number);
            continue;
        }
        std::optional<Stored>& earlier = byPage[static_cast<std::size_t>(watch.storedPage)];
        if (earlier && earlier->pixels != watch.storedPixels) {
            report.unusedLines.push_back(earlier->line);
        }
        earlier = Stored{number, watch.storedPixels};
    }
    std::sort(report.unusedLines.begin(), report.unusedLines.end());
    return report;
}

QByteArray BuildMemoryBytes(const std::array<Page, kLastPage>& pages) {
    QByteArray bytes;
    for (int page = kFirstPage; page <= kLastPage; ++page) {
        bytes += QByteArray::fromStdString(MakeGraphicStoreSysEx(
            pages[static_cast<std::size_t>(page - 1)], static_cast<std::uint8_t>(page)));
        bytes += "\r\n";
    }
    return bytes;
}

}  // namespace lumidot
