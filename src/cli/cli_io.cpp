#include "cli/cli_io.h"

#include <QFile>
#include <QSaveFile>
#include <cstdio>

namespace lumidot::cli {

QString DisplayName(const QString& path) {
    return path == QLatin1String("-") ? QStringLiteral("standard input") : path;
}

std::optional<QByteArray> ReadInput(const QString& path, QString& error) {
    QFile file;
    const bool open = path == QLatin1String("-")
                          ? file.open(stdin, QIODevice::ReadOnly)
                          : (file.setFileName(path), file.open(QIODevice::ReadOnly));
    QByteArray bytes;
    if (open) bytes = file.readAll();
    if (!open || file.error() != QFileDevice::NoError) {
        error = QStringLiteral("%1: cannot be read: %2").arg(DisplayName(path), file.errorString());
        return std::nullopt;
    }
    return bytes;
}

std::optional<QByteArray> ReadInputOrSay(const QString& path) {
    QString error;
    std::optional<QByteArray> bytes = ReadInput(path, error);
    if (!bytes) PrintError(error);
    return bytes;
}

bool WriteOutput(const QString& path, const QByteArray& bytes, QString& error) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        error = QStringLiteral("%1: cannot be written: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

void PrintOut(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    std::fwrite(utf8.constData(), 1, static_cast<std::size_t>(utf8.size()), stdout);
}

void PrintError(const QString& text) {
    // What was printed comes first, also where both streams go to one terminal or file.
    std::fflush(stdout);
    const QByteArray utf8 = (QStringLiteral("lumidot-cli: ") + text + QLatin1Char('\n')).toUtf8();
    std::fwrite(utf8.constData(), 1, static_cast<std::size_t>(utf8.size()), stderr);
}

QString HexRefusal(HexCheck check) {
    switch (check) {
        case HexCheck::TooShort:
            return QStringLiteral(
                "there is no SysEx message in it (or it is too short to be a "
                "valid message)");
        case HexCheck::NotHex:
            return QStringLiteral(
                "a character that is not a hex digit stands where the layout "
                "puts one (see --prefix, --suffix and --separator)");
        case HexCheck::NotSysEx:
            return QStringLiteral("SysEx messages must begin with F0 and end with F7");
        case HexCheck::Ok:
            break;
    }
    return QString();
}

bool ReportProblems(const QString& name, const std::vector<FileProblem>& problems,
                    const std::optional<FileProblem>& error) {
    for (const FileProblem& problem : problems) {
        PrintError(QStringLiteral("%1: offset %2: %3")
                       .arg(name)
                       .arg(static_cast<qulonglong>(problem.offset))
                       .arg(QString::fromStdString(problem.text)));
    }
    if (error) ReportProblems(name, {*error}, std::nullopt);
    return !problems.empty() || error.has_value();
}

}  // namespace lumidot::cli
