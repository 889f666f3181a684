#include "mainwindow/file_texts.h"

#include <QDir>
#include <QFileInfo>

#include "decode/file_messages.h"
#include "decode/message_list.h"

namespace lumidot::file_texts {
namespace {

// Long lists of problems or repairs are cut here, with a line that says how many more.
constexpr std::size_t kLongestList = 12;

QString Shown(const QString& path) {
    return QDir::toNativeSeparators(path);
}

QString ProblemLine(const FileProblem& problem) {
    return QStringLiteral("At byte %1: %2.")
        .arg(static_cast<qulonglong>(problem.offset))
        .arg(QString::fromStdString(problem.text));
}

// One line each, the list cut short with a last line saying how many more there are.
QString Lines(const QStringList& lines) {
    if (static_cast<std::size_t>(lines.size()) <= kLongestList) {
        return lines.join(QStringLiteral("\r\n"));
    }
    return lines.mid(0, kLongestList).join(QStringLiteral("\r\n")) +
           QStringLiteral("\r\n... and %1 more.").arg(lines.size() - kLongestList);
}

QString ProblemLines(const std::vector<FileProblem>& problems) {
    QStringList lines;
    for (const FileProblem& problem : problems) lines << ProblemLine(problem);
    return Lines(lines);
}

QString HexRefusal(HexCheck check) {
    switch (check) {
        case HexCheck::TooShort:
            return QStringLiteral(
                "It holds no SysEx message (or one too short to be a valid message).");
        case HexCheck::NotHex:
            return QStringLiteral(
                "It holds a character that is not a hex digit where a byte's digits belong. "
                "A text file is read as hex text laid out with the prefix, suffix and "
                "separator set in the window.");
        case HexCheck::NotSysEx:
        case HexCheck::Ok:
            break;
    }
    return QStringLiteral(
        "Its hex text does not begin with F0 and end with F7, as SysEx "
        "messages do.");
}

}  // namespace

QStringList OpenFilters() {
    return {QStringLiteral("Message files (*.syx *.mid *.midi *.txt)"), kSyxFilter, kMidiFilter,
            QStringLiteral("Hex text (*.txt)"), QStringLiteral("All files (*)")};
}

QStringList RepairFilters() {
    return {QStringLiteral("SysEx and MIDI files (*.syx *.mid *.midi)"), kSyxFilter, kMidiFilter,
            QStringLiteral("All files (*)")};
}

Box CannotOpen(const QString& path, const QString& reason) {
    return {QStringLiteral("Cannot open file"), Shown(path) + QStringLiteral("\r\n\r\n") + reason};
}

QString NotFound() {
    return QStringLiteral("The file was not found.");
}
QString IsFolder() {
    return QStringLiteral("This is a folder, not a file.");
}
QString IsEmpty() {
    return QStringLiteral("The file is empty.");
}

QString TooBig(qint64 bytes, qint64 limit) {
    return QStringLiteral(
               "It is too big to be a file of messages: %1 MB, where at most %2 MB "
               "are read.")
        .arg((bytes + (1 << 20) - 1) >> 20)
        .arg(limit >> 20);
}

QString Unreadable(const QString& why) {
    return QStringLiteral("It cannot be read: %1.").arg(why);
}

std::optional<Verdict> JudgeReading(const QString& path, const FileMessages& messages,
                                    bool startsWithMThd) {
    const FileReading& reading = messages.reading();
    const std::size_t count = messages.count();
    if (reading.kind == FileKind::HexText && reading.check != HexCheck::Ok) {
        return Verdict{CannotOpen(path, HexRefusal(reading.check))};
    }
    if (reading.kind == FileKind::Midi && !startsWithMThd) {
        return Verdict{CannotOpen(path, QStringLiteral("It is not a MIDI file: a MIDI file "
                                                       "starts with the letters MThd."))};
    }
    std::vector<FileProblem> problems = reading.problems;
    if (reading.error) problems.push_back(*reading.error);
    if (count == 0) {
        // The .syx reader's last word on a file without messages says just that.
        if (reading.kind == FileKind::Syx && !problems.empty()) problems.pop_back();
        QString reason = reading.error && reading.kind == FileKind::Midi
                             ? QStringLiteral("It cannot be read as a MIDI file.")
                             : QStringLiteral("It holds no SysEx message.");
        if (!problems.empty()) reason += QStringLiteral("\r\n\r\n") + ProblemLines(problems);
        return Verdict{CannotOpen(path, reason)};
    }
    if (problems.empty()) return std::nullopt;
    return Verdict{{QStringLiteral("Damaged file"),
                    Shown(path) + QStringLiteral("\r\n\r\n") + ProblemLines(problems) +
                        QStringLiteral("\r\n\r\nOpen the %1 that could be read anyway?")
                            .arg(count == 1 ? QStringLiteral("one complete message")
                                            : QStringLiteral("%1 complete messages").arg(count))},
                   true};
}

QString OpeningLabel(const QString& path) {
    return QStringLiteral("Reading the messages of %1...").arg(QFileInfo(path).fileName());
}

Box ReplaceExisting(const QString& path) {
    return {QStringLiteral("Replace file?"),
            Shown(path) + QStringLiteral("\r\n\r\nThis file already exists. Replace it?")};
}

Box ReplaceOriginal(const QString& path) {
    return {
        QStringLiteral("Replace the original?"),
        Shown(path) + QStringLiteral("\r\n\r\nThis is the file being repaired. Replace it with the "
                                     "repaired copy? The original cannot be had back afterwards.")};
}

Box CannotSave(const QString& path, const QString& why) {
    return {QStringLiteral("Cannot save file"),
            Shown(path) + QStringLiteral("\r\n\r\nIt cannot be written: %1.").arg(why)};
}

Box NothingToExport() {
    return {QStringLiteral("Nothing to export"),
            QStringLiteral("The output pane at the bottom of the window holds no complete "
                           "message to export.")};
}

Box NotRepairable(const QString& path) {
    return {
        QStringLiteral("Cannot repair file"),
        Shown(path) + QStringLiteral("\r\n\r\nIt is neither a .syx file nor a MIDI file. Open it "
                                     "instead: the messages of hex text are shown cleaned, with "
                                     "their checksums recalculated.")};
}

Box RepairUnreadable(const QString& path, const FileProblem& error) {
    return {QStringLiteral("Cannot repair file"),
            Shown(path) + QStringLiteral("\r\n\r\nIt cannot be read as a MIDI file. ") +
                ProblemLine(error) + QStringLiteral("\r\nNothing was written.")};
}

Box NothingToRepair(const QString& path, const std::vector<FileProblem>& problems) {
    QString prompt = Shown(path) + QStringLiteral(
                                       "\r\n\r\nEvery checksum in it is right: "
                                       "nothing needs repairing.");
    if (!problems.empty()) prompt += QStringLiteral("\r\n\r\n") + ProblemLines(problems);
    return {QStringLiteral("Repair checksums"), prompt};
}

Box Repaired(const QString& original, const QString& copy, FileKind kind,
             const RepairReport& report) {
    QStringList lines;
    for (const ChecksumFix& fix : report.fixes) {
        const MessagePlace place = kind == FileKind::Midi
                                       ? MessagePlace::AtTime(fix.seconds, fix.track + 1)
                                       : MessagePlace::AtOffset(fix.messageOffset);
        lines << QStringLiteral("%1 checksum at byte %2 changed from %3 to %4")
                     .arg(PlaceText(place))
                     .arg(static_cast<qulonglong>(fix.offset))
                     .arg(QString::fromStdString(HexByte(fix.was)),
                          QString::fromStdString(HexByte(fix.now)));
    }
    const qsizetype count = static_cast<qsizetype>(report.fixes.size());
    QString prompt = QStringLiteral("%1 repaired in\r\n%2\r\nand written to\r\n%3\r\n\r\n")
                         .arg(count == 1 ? QStringLiteral("1 message was")
                                         : QStringLiteral("%1 messages were").arg(count),
                              Shown(original), Shown(copy)) +
                     Lines(lines);
    if (!report.problems.empty()) {
        prompt += QStringLiteral(
                      "\r\n\r\nThe file is damaged besides; nothing else was "
                      "changed:\r\n") +
                  ProblemLines(report.problems);
    }
    return {QStringLiteral("Checksums repaired"), prompt};
}

}  // namespace lumidot::file_texts
