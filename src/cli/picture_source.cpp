#include "cli/picture_source.h"

#include <QStringList>

#include "cli/cli_io.h"

namespace lumidot::cli {
namespace {

std::optional<Page> ParseDots(const QString& text, const QString& name, QString& error) {
    QStringList lines = text.split(QLatin1Char('\n'));
    // A file that ends in a line break has nothing after it.
    if (lines.size() > 1 && lines.back().isEmpty()) lines.removeLast();
    if (lines.size() != kPageSide) {
        error = QStringLiteral("%1: a picture has 16 lines, this one has %2")
                    .arg(name)
                    .arg(lines.size());
        return std::nullopt;
    }
    Page page{};
    for (int row = 0; row < kPageSide; ++row) {
        QString line = lines[row];
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
        if (line.size() != kPageSide) {
            error = QStringLiteral("%1: line %2 has %3 characters, not 16")
                        .arg(name)
                        .arg(row + 1)
                        .arg(line.size());
            return std::nullopt;
        }
        for (int column = 0; column < kPageSide; ++column) {
            const QChar dot = line[column];
            if (dot != QLatin1Char('#') && dot != QLatin1Char('.')) {
                error =
                    QStringLiteral("%1: line %2, column %3: \"%4\" is neither # (on) nor . (off)")
                        .arg(name)
                        .arg(row + 1)
                        .arg(column + 1)
                        .arg(dot);
                return std::nullopt;
            }
            page[static_cast<std::size_t>(kPageSide * row + column)] = dot == QLatin1Char('#');
        }
    }
    return page;
}

}  // namespace

std::optional<Page> ReadPicture(const QString& path, QString& error) {
    const std::optional<QByteArray> bytes = ReadInput(path, error);
    if (!bytes) return std::nullopt;
    return ParseDots(QString::fromUtf8(*bytes), DisplayName(path), error);
}

}  // namespace lumidot::cli
