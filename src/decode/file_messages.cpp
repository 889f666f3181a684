#include "decode/file_messages.h"

#include "files/midi_file.h"
#include "files/syx_file.h"
#include "mainwindow/window_model.h"

namespace lumidot {

FileReading DescribeFile(std::span<const std::uint8_t> file, std::string_view name,
                         const ByteLayout& layout, MessageListDescription& list) {
    FileReading reading;
    reading.kind = GuessFileKind(file, name);
    switch (reading.kind) {
        case FileKind::Midi: {
            MidiContents contents = ReadMidi(file);
            list.reserve(contents.messages.size());
            reading.ticks.reserve(contents.messages.size());
            for (const MidiSysEx& message : contents.messages) {
                // Sequencers count tracks from 1.
                list.add(message.bytes, MessagePlace::AtTime(message.seconds, message.track + 1));
                reading.ticks.push_back(message.tick);
            }
            reading.problems = std::move(contents.problems);
            reading.error = std::move(contents.error);
            break;
        }
        case FileKind::Syx: {
            SyxContents contents = ReadSyx(file);
            list.reserve(contents.messages.size());
            for (const SyxMessage& message : contents.messages) {
                list.add(message.bytes, MessagePlace::AtOffset(message.offset));
            }
            reading.problems = std::move(contents.problems);
            break;
        }
        case FileKind::HexText: {
            const QString text = QString::fromUtf8(reinterpret_cast<const char*>(file.data()),
                                                   static_cast<qsizetype>(file.size()));
            const HexDigits digits = ReadHexDigitsOf(text, layout.prefix, layout.suffix,
                                                     layout.separator, &reading.check);
            if (reading.check != HexCheck::Ok) break;
            MessageReader messages(digits);
            for (std::string message; messages.next(message);) list.add(message, MessagePlace{});
            break;
        }
    }
    return reading;
}

}  // namespace lumidot
