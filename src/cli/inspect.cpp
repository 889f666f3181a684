// describe and repair: the messages of a file, explained or with their checksums put right.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <vector>

#include "cli/cli_io.h"
#include "cli/commands.h"
#include "decode/file_messages.h"
#include "files/checksum_repair.h"
#include "files/file_kind.h"

namespace lumidot::cli {
namespace {

using Bytes = std::span<const std::uint8_t>;

Bytes AsSpan(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

const char* KindName(FileKind kind) {
    switch (kind) {
        case FileKind::Midi:
            return "midi";
        case FileKind::Syx:
            return "syx";
        case FileKind::HexText:
            return "hex";
    }
    return "";
}

QJsonObject ProblemJson(const FileProblem& problem) {
    return {{QStringLiteral("offset"), static_cast<qint64>(problem.offset)},
            {QStringLiteral("problem"), QString::fromStdString(problem.text)}};
}

void AddProblems(QJsonObject& json, const std::vector<FileProblem>& problems,
                 const std::optional<FileProblem>& error) {
    QJsonArray list;
    for (const FileProblem& problem : problems) list.append(ProblemJson(problem));
    json[QStringLiteral("problems")] = list;
    if (error) json[QStringLiteral("error")] = ProblemJson(*error);
}

}  // namespace

int Describe(const Options& options, const std::string& codePage) {
    const QString path = options.arguments.isEmpty() ? QStringLiteral("-") : options.arguments[0];
    const QString name = DisplayName(path);
    const std::optional<QByteArray> input = ReadInputOrSay(path);
    if (!input) return kBadInput;

    WindowModel model(codePage);
    model.setPrefix(options.layout.prefix);
    model.setSuffix(options.layout.suffix);
    model.setSeparator(options.layout.separator);
    MessageListDescription list(model);
    const FileReading reading =
        DescribeFile(AsSpan(*input), path.toStdString(), model.layout(), list);
    if (reading.check != HexCheck::Ok) {
        PrintError(name + QStringLiteral(": ") + HexRefusal(reading.check));
        return kBadInput;
    }

    if (options.json) {
        QJsonArray messages;
        for (std::size_t i = 0; i < list.entries().size(); ++i) {
            const MessageListDescription::Entry& entry = list.entries()[i];
            QJsonObject item{{QStringLiteral("number"), static_cast<qint64>(i + 1)},
                             {QStringLiteral("line"), list.line(i)},
                             {QStringLiteral("description"), entry.message.description},
                             {QStringLiteral("cleaned"), entry.message.cleaned}};
            if (entry.place.kind == MessagePlace::Kind::Offset) {
                item[QStringLiteral("offset")] = static_cast<qint64>(entry.place.offset);
            } else if (entry.place.kind == MessagePlace::Kind::Time) {
                item[QStringLiteral("time")] = TimeText(entry.place.seconds);
                item[QStringLiteral("seconds")] = entry.place.seconds;
                item[QStringLiteral("track")] = entry.place.track;
                item[QStringLiteral("tick")] = static_cast<qint64>(reading.ticks[i]);
            }
            messages.append(item);
        }
        QJsonObject json{{QStringLiteral("file"), name},
                         {QStringLiteral("kind"), QLatin1String(KindName(reading.kind))},
                         {QStringLiteral("count"), list.count()},
                         {QStringLiteral("messages"), messages}};
        AddProblems(json, reading.problems, reading.error);
        PrintOut(QString::fromUtf8(QJsonDocument(json).toJson()));
    } else {
        QString lines;
        for (std::size_t i = 0; i < list.entries().size(); ++i) {
            lines += list.line(i);
            lines += QLatin1Char('\n');
        }
        PrintOut(lines);
    }
    return ReportProblems(name, reading.problems, reading.error) ? kBadInput : kSuccess;
}

int Repair(const Options& options) {
    const QString& in = options.arguments[0];
    const QString& out = options.arguments[1];
    const std::optional<QByteArray> input = ReadInputOrSay(in);
    if (!input) return kBadInput;
    std::vector<std::uint8_t> file(input->begin(), input->end());
    const FileKind kind = GuessFileKind(file, in.toStdString());
    if (kind == FileKind::HexText) {
        PrintError(DisplayName(in) + QStringLiteral(": neither a MIDI file nor a .syx file "
                                                    "(describe cleans hex text)"));
        return kBadInput;
    }
    const RepairReport report =
        kind == FileKind::Midi ? RepairMidiChecksums(file) : RepairSyxChecksums(file);
    if (report.error) {
        ReportProblems(DisplayName(in), {}, report.error);
        return kBadInput;
    }
    const QByteArray repaired(reinterpret_cast<const char*>(file.data()),
                              static_cast<qsizetype>(file.size()));
    QString writeError;
    if (!WriteOutput(out, repaired, writeError)) {
        PrintError(writeError);
        return kBadInput;
    }

    QJsonArray fixes;
    QString lines;
    for (const ChecksumFix& fix : report.fixes) {
        const QString was = QString::fromStdString(HexByte(fix.was));
        const QString now = QString::fromStdString(HexByte(fix.now));
        const MessagePlace place = kind == FileKind::Midi
                                       ? MessagePlace::AtTime(fix.seconds, fix.track + 1)
                                       : MessagePlace::AtOffset(fix.messageOffset);
        lines += QStringLiteral("%1 checksum at offset %2 changed from %3 to %4\n")
                     .arg(PlaceText(place))
                     .arg(static_cast<qulonglong>(fix.offset))
                     .arg(was, now);
        QJsonObject item{{QStringLiteral("messageOffset"), static_cast<qint64>(fix.messageOffset)},
                         {QStringLiteral("offset"), static_cast<qint64>(fix.offset)},
                         {QStringLiteral("was"), was},
                         {QStringLiteral("now"), now}};
        if (kind == FileKind::Midi) {
            item[QStringLiteral("time")] = TimeText(fix.seconds);
            item[QStringLiteral("track")] = fix.track + 1;
        }
        fixes.append(item);
    }
    const qsizetype count = fixes.size();
    lines += count == 0 ? QStringLiteral("No checksum needed repairing; %1 written\n").arg(out)
                        : QStringLiteral("%1 checksum%2 repaired; %3 written\n")
                              .arg(count)
                              .arg(count == 1 ? QString() : QStringLiteral("s"), out);
    if (options.json) {
        QJsonObject json{{QStringLiteral("file"), DisplayName(in)},
                         {QStringLiteral("output"), out},
                         {QStringLiteral("kind"), QLatin1String(KindName(kind))},
                         {QStringLiteral("repairs"), fixes}};
        AddProblems(json, report.problems, std::nullopt);
        PrintOut(QString::fromUtf8(QJsonDocument(json).toJson()));
    } else {
        PrintOut(lines);
    }
    return ReportProblems(DisplayName(in), report.problems, std::nullopt) ? kBadInput : kSuccess;
}

}  // namespace lumidot::cli
