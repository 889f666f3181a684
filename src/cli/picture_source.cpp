#include "cli/picture_source.h"

#include <fcntl.h>
#include <unistd.h>

#include <QStringList>

#include "cli/cli_io.h"
#include "pictures/picture_file.h"

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

// Qt's image readers, and libpng under them, write their own complaints to standard error
// as they fail; the command line reports each problem in one line of its own, with the
// reader's reason, so standard error leads nowhere while a picture is read.
class QuietImageReaders {
public:
    QuietImageReaders() : saved_(dup(STDERR_FILENO)) {
        const int nowhere = open("/dev/null", O_WRONLY);
        if (saved_ >= 0 && nowhere >= 0) dup2(nowhere, STDERR_FILENO);
        if (nowhere >= 0) close(nowhere);
    }
    ~QuietImageReaders() {
        if (saved_ < 0) return;
        dup2(saved_, STDERR_FILENO);
        close(saved_);
    }
    QuietImageReaders(const QuietImageReaders&) = delete;
    QuietImageReaders& operator=(const QuietImageReaders&) = delete;

private:
    int saved_;
};

// The reader's reason, a sentence, as the rest of a one-line report.
QString AsReport(const QString& name, const QString& problem) {
    QString rest = problem;
    if (rest.endsWith(QLatin1Char('.'))) rest.chop(1);
    if (!rest.isEmpty()) rest[0] = rest[0].toLower();
    return name + QStringLiteral(": ") + rest;
}

std::optional<Page> Converted(const PictureFrames& read, const QString& name,
                              const PictureOptions& options, QString& error) {
    if (!read.ok()) {
        error = AsReport(name, read.problem);
        return std::nullopt;
    }
    return ConvertPicture(read.frames.front(), options);
}

}  // namespace

std::optional<Page> ReadPicture(const QString& path, const PictureOptions& options,
                                bool optionsGiven, QString& error) {
    const QString name = DisplayName(path);
    const QuietImageReaders quiet;
    const bool standardInput = path == QLatin1String("-");
    // A file named as a picture is read as one even when it is not, so that a damaged
    // photo is reported as such rather than as a text of the wrong shape.
    if (!standardInput && (HasPictureSuffix(path) || IsPictureFile(path))) {
        return Converted(ReadPictureFile(path, 1), name, options, error);
    }
    const std::optional<QByteArray> bytes = ReadInput(path, error);
    if (!bytes) return std::nullopt;
    if (standardInput && LooksLikePicture(*bytes)) {
        return Converted(ReadPictureData(*bytes, 1), name, options, error);
    }
    if (optionsGiven) {
        error = QStringLiteral(
                    "%1: --threshold, --dither and --invert are for image files, not "
                    "for a picture of # and .")
                    .arg(name);
        return std::nullopt;
    }
    return ParseDots(QString::fromUtf8(*bytes), name, error);
}

}  // namespace lumidot::cli
