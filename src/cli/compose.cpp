// text, display and store: the window's own messages, from the command line.
#include <QFileInfo>

#include "cli/cli_io.h"
#include "cli/commands.h"
#include "cli/picture_source.h"
#include "codec/graphic_page.h"
#include "codec/lcd_text.h"
#include "files/file_kind.h"
#include "files/midi_file.h"
#include "files/syx_file.h"

namespace lumidot::cli {
namespace {

QByteArray AsBytes(const ByteArray& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<qsizetype>(bytes.size()));
}

// The spaced hex text of the message the command asks for, or an empty text with error set.
std::string Message(const Options& options, const std::string& codePage, QString& error) {
    switch (options.command) {
        case Command::Text: {
            const QString& text = options.arguments[0];
            const qsizetype characters = text.toUcs4().size();
            if (characters > kLcdTextMaxLength) {
                error = QStringLiteral("the LCD text holds at most %1 characters, this one has %2")
                            .arg(kLcdTextMaxLength)
                            .arg(characters);
                return {};
            }
            return MakeTextSysEx(text.toStdString(), codePage);
        }
        case Command::Display:
            return MakeGraphicDisplaySysEx(static_cast<std::uint8_t>(options.page));
        case Command::Store: {
            const std::optional<Page> picture =
                ReadPicture(options.arguments[1], options.picture, options.pictureOptions, error);
            if (!picture) return {};
            return MakeGraphicStoreSysEx(*picture, static_cast<std::uint8_t>(options.page));
        }
        default:
            return {};
    }
}

}  // namespace

int Compose(const Options& options, const std::string& codePage) {
    QString error;
    const std::string spaced = Message(options, codePage, error);
    if (spaced.empty()) {
        PrintError(error);
        return kBadInput;
    }
    const QString text =
        LayOutBytes(QString::fromStdString(spaced), options.layout) + QLatin1Char('\n');
    if (options.output.isEmpty()) {
        PrintOut(text);
        return kSuccess;
    }
    ByteArray bytes;
    HexTextToBytes(spaced, bytes);
    const std::string name = QFileInfo(options.output).fileName().toStdString();
    QByteArray file;
    if (HasSyxExtension(name)) {
        file = AsBytes(WriteSyx({bytes}));
    } else if (HasMidiExtension(name)) {
        file = AsBytes(WriteMidi({{0.0, bytes}}));
    } else {
        file = text.toUtf8();
    }
    if (!WriteOutput(options.output, file, error)) {
        PrintError(error);
        return kBadInput;
    }
    return kSuccess;
}

}  // namespace lumidot::cli
