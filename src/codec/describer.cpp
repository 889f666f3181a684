#include "codec/describer.h"

#include "codec/code_page.h"
#include "codec/gs_message.h"

namespace lumidot {

namespace {

constexpr std::uint8_t kStart = 0xF0;
constexpr std::uint8_t kEnd = 0xF7;
constexpr std::uint8_t kRoland = 0x41;
constexpr std::uint8_t kAddressHigh = 0x10;  // first address byte of every display message
constexpr std::uint8_t kDisplayBlock = 0x20;
constexpr std::uint8_t kFirstPrintable = 0x20;
constexpr int kMillisecondsPerDurationStep = 480;

// Byte positions after the leading F0 bytes are gone.
constexpr std::size_t kModel = 2;
constexpr std::size_t kAddress = 4;
constexpr std::size_t kData = 7;
constexpr std::size_t kShortestGS = 8;  // up to and including the first data byte

std::string DescribeText(ByteArray bytes, SysExTarget& target, const std::string& codePage) {
    if (bytes.back() == kEnd) bytes.pop_back();
    // The last byte left is the checksum; the text lies between the address and it, after any
    // control bytes in front of it.
    const std::size_t checksum = bytes.size() - 1;
    std::size_t first = kData;
    while (first < checksum && bytes[first] < kFirstPrintable) ++first;
    std::string description;
    if (first < checksum) {
        const std::string data(bytes.begin() + static_cast<std::ptrdiff_t>(first),
                               bytes.begin() + static_cast<std::ptrdiff_t>(checksum));
        target.setLcdText(AnsiToUtf8(data, codePage));
        description = "Display text: " + target.lcdText();
    } else {
        target.setLcdText("");
        description = "Display text with no length (INVALID).";
    }
    target.txtTextIn_Change();
    return description;
}

std::string DescribeStore(const ByteArray& bytes, SysExTarget& target) {
    const std::uint8_t pair = bytes[kAddress + 1];
    const std::uint8_t half = bytes[kAddress + 2];
    // Without all 64 data bytes there is no picture to store.
    if ((half != 0x00 && half != 0x40) || bytes.size() < kData + kPackedPageBytes) {
        return "Graphic: Store page INVALID";
    }
    const int page = half == 0x00 ? 2 * (pair - 1) + 1 : 2 * pair;
    target.SetPageNum(static_cast<std::uint8_t>(page));
    target.SetFDPixelColAll(UnpackPage(bytes.data() + kData));
    target.selectStoreMode();
    return "Graphic: Store page " + std::to_string(page);
}

std::string DescribeDisplay(const ByteArray& bytes, SysExTarget& target) {
    const std::uint8_t page = bytes[kData];
    if (page == 0) {
        target.cmdFDPageDisplay_Click();
        return "Graphic: Display no page";
    }
    if (page > kLastPage) return "Graphic: Display page INVALID";
    target.SetPageNum(page);
    target.selectDisplayMode();
    target.AutoSetSysExText();
    return "Graphic: Display page " + std::to_string(page);
}

std::string DescribeDuration(const ByteArray& bytes) {
    return "Graphic: Set duration to " +
           std::to_string(kMillisecondsPerDurationStep * bytes[kData]) + " milliseconds";
}

std::string EchoUnrecognised(const ByteArray& bytes, SysExTarget& target,
                             const std::string& description) {
    target.setSysExOutText("F0 " + BytesToHexText(bytes));
    return description;
}

// Any other GS message is rebuilt with its own model ID and a checksum computed afresh; the
// last byte is taken to be F7 and the one before it the checksum received.
std::string CheckGS(const ByteArray& bytes, SysExTarget& target) {
    const std::uint8_t model = bytes[kModel];
    if (bytes[0] != kRoland || (model != kModelDisplay && model != kModelGS)) {
        return EchoUnrecognised(bytes, target, "(Unrecognised SysEx - not GS)");
    }
    const std::uint8_t received = bytes[bytes.size() - 2];
    const ByteArray body(bytes.begin() + kAddress, bytes.end() - 2);
    const std::uint8_t computed = GSChecksum(body);
    target.setSysExOutText(MakeGSSysExText(body, model));
    if (received != computed) {
        return "(Unrecognised SysEx - GS checksum changed from " + HexByte(received) + " to " +
               HexByte(computed) + ")";
    }
    return "(Unrecognised SysEx - GS checksum was valid; kept as " + HexByte(computed) + ")";
}

}  // namespace

std::string DescribeSysEx(const std::string& hexText, SysExTarget& target,
                          const std::string& codePage) {
    // Callers pass hex digits only; should a stray character slip through, the bytes read
    // before it are described.
    ByteArray parsed;
    HexTextToBytes(hexText, parsed);
    std::size_t start = 0;
    while (parsed.size() - start >= 2 && parsed[start] == kStart) ++start;
    const ByteArray bytes(parsed.begin() + static_cast<std::ptrdiff_t>(start), parsed.end());

    if (bytes.size() < 2) {
        target.setSysExOutText("F0 F7");
        return "(No SysEx)";
    }
    if (bytes.size() < kShortestGS) {
        return EchoUnrecognised(bytes, target,
                                "(Unrecognised SysEx - message is too short to be GS)");
    }
    const std::uint8_t high = bytes[kAddress];
    const std::uint8_t middle = bytes[kAddress + 1];
    const std::uint8_t low = bytes[kAddress + 2];
    if (high != kAddressHigh) return CheckGS(bytes, target);
    if (middle == 0x00) {
        return low == 0x00 ? DescribeText(bytes, target, codePage) : CheckGS(bytes, target);
    }
    if (middle >= 0x01 && middle <= 0x05) return DescribeStore(bytes, target);
    if (middle == kDisplayBlock && low == 0x00) return DescribeDisplay(bytes, target);
    if (middle == kDisplayBlock && low == 0x01) return DescribeDuration(bytes);
    return CheckGS(bytes, target);
}

}  // namespace lumidot
