#include "files/syx_file.h"

#include <string>

namespace lumidot {
namespace {

constexpr std::uint8_t kStart = 0xF0;
constexpr std::uint8_t kEnd = 0xF7;

std::string Bytes(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

}  // namespace

SyxContents ReadSyx(std::span<const std::uint8_t> file) {
    SyxContents contents;
    const std::size_t size = file.size();
    std::size_t i = 0;
    while (i < size) {
        if (file[i] != kStart) {
            // One report for each run of stray bytes, at its first byte.
            const std::size_t start = i;
            while (i < size && file[i] != kStart) ++i;
            contents.problems.push_back({start, Bytes(i - start) + " outside any message"});
            continue;
        }
        const std::size_t start = i++;
        while (i < size && file[i] < 0x80) ++i;
        if (i == size) {
            contents.problems.push_back({start, "message cut off by the end of the file (" +
                                                    Bytes(size - start) + ", no F7)"});
            break;
        }
        if (file[i] != kEnd) {
            // The status byte that cuts the message off is read again as what it is.
            contents.problems.push_back({start, "message cut off by byte " + HexByte(file[i]) +
                                                    " at offset " + std::to_string(i) +
                                                    " (no F7)"});
            continue;
        }
        ++i;
        contents.messages.push_back(
            {start, ByteArray(file.begin() + static_cast<std::ptrdiff_t>(start),
                              file.begin() + static_cast<std::ptrdiff_t>(i))});
    }
    if (contents.messages.empty()) {
        contents.problems.push_back({0, size == 0 ? std::string("the file is empty")
                                                  : std::string("the file holds no message")});
    }
    return contents;
}

ByteArray WriteSyx(const std::vector<ByteArray>& messages) {
    ByteArray file;
    std::size_t size = 0;
    for (const ByteArray& message : messages) size += message.size();
    file.reserve(size);
    for (const ByteArray& message : messages)
        file.insert(file.end(), message.begin(), message.end());
    return file;
}

}  // namespace lumidot
