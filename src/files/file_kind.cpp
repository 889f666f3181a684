#include "files/file_kind.h"

#include <algorithm>
#include <cctype>

namespace lumidot {
namespace {

bool EndsWith(std::string_view name, std::string_view extension) {
    if (name.size() < extension.size()) return false;
    return std::equal(
        extension.begin(), extension.end(), name.end() - extension.size(),
        [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

}  // namespace

bool HasMidiExtension(std::string_view name) {
    return EndsWith(name, ".mid") || EndsWith(name, ".midi") || EndsWith(name, ".smf");
}

bool HasSyxExtension(std::string_view name) {
    return EndsWith(name, ".syx");
}

FileKind GuessFileKind(std::span<const std::uint8_t> file, std::string_view name) {
    static constexpr std::uint8_t kMidiMagic[] = {'M', 'T', 'h', 'd'};
    if (file.size() >= 4 && std::equal(file.begin(), file.begin() + 4, kMidiMagic)) {
        return FileKind::Midi;
    }
    if (HasMidiExtension(name)) return FileKind::Midi;
    if (HasSyxExtension(name) || (!file.empty() && file.front() == 0xF0)) return FileKind::Syx;
    return FileKind::HexText;
}

}  // namespace lumidot
