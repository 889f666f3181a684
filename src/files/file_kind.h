// Telling the kinds of file with messages in them apart.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace lumidot {

enum class FileKind { Midi, Syx, HexText };

// A file that starts with MThd is a Standard MIDI File whatever its name, and so is one
// named like one (its reader then says what is wrong with it). Then a name ending in .syx,
// or a first byte F0, makes a raw message file; everything else is hex text.
FileKind GuessFileKind(std::span<const std::uint8_t> file, std::string_view name);

// Whether a name ends in .mid, .midi or .smf (any letter case).
bool HasMidiExtension(std::string_view name);
// Whether a name ends in .syx (any letter case).
bool HasSyxExtension(std::string_view name);

}  // namespace lumidot
