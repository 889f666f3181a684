#include "decode/file_messages.h"

#include "mainwindow/window_model.h"

namespace lumidot {

FileMessages::FileMessages(std::span<const std::uint8_t> file, std::string_view name,
                           const ByteLayout& layout) {
    reading_.kind = GuessFileKind(file, name);
    switch (reading_.kind) {
        case FileKind::Midi: {
            midi_ = ReadMidi(file);
            count_ = midi_.messages.size();
            reading_.ticks.reserve(count_);
            for (const MidiSysEx& message : midi_.messages) reading_.ticks.push_back(message.tick);
            reading_.problems = midi_.problems;
            reading_.error = midi_.error;
            break;
        }
        case FileKind::Syx: {
            syx_ = ReadSyx(file);
            count_ = syx_.messages.size();
            reading_.problems = syx_.problems;
            break;
        }
        case FileKind::HexText: {
            const QString text = QString::fromUtf8(reinterpret_cast<const char*>(file.data()),
                                                   static_cast<qsizetype>(file.size()));
            digits_ = std::make_unique<HexDigits>(ReadHexDigitsOf(
                text, layout.prefix, layout.suffix, layout.separator, &reading_.check));
            if (reading_.check != HexCheck::Ok) break;
            MessageReader counter(*digits_);
            for (std::string message; counter.next(message);) ++count_;
            hexMessages_ = std::make_unique<MessageReader>(*digits_);
            break;
        }
    }
}

FileMessages::~FileMessages() = default;

bool FileMessages::describeNext(MessageListDescription& list, std::size_t most) {
    if (described_ == 0) list.reserve(count_);
    const std::size_t end = std::min(count_, described_ + most);
    for (; described_ < end; ++described_) {
        switch (reading_.kind) {
            case FileKind::Midi: {
                const MidiSysEx& message = midi_.messages[described_];
                // Sequencers count tracks from 1.
                list.add(message.bytes, MessagePlace::AtTime(message.seconds, message.track + 1));
                break;
            }
            case FileKind::Syx: {
                const SyxMessage& message = syx_.messages[described_];
                list.add(message.bytes, MessagePlace::AtOffset(message.offset));
                break;
            }
            case FileKind::HexText: {
                std::string message;
                hexMessages_->next(message);
                list.add(message, MessagePlace{});
                break;
            }
        }
    }
    return described_ < count_;
}

FileReading DescribeFile(std::span<const std::uint8_t> file, std::string_view name,
                         const ByteLayout& layout, MessageListDescription& list) {
    FileMessages messages(file, name, layout);
    messages.describeNext(list, messages.count());
    return messages.reading();
}

}  // namespace lumidot
