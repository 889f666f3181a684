#include "storage/text_helpers.h"

#include <QFileInfo>
#include <QStringDecoder>
#include <utility>

namespace lumidot {

RoutineError::RoutineError(qint32 number, QString source, QString description)
    : std::runtime_error(description.toStdString()),
      number_(number),
      source_(std::move(source)),
      description_(std::move(description)) {}

bool FileExists(const QString& path) {
    if (path.isEmpty() || path.endsWith(QLatin1Char('/'))) return false;
    const QFileInfo info(path);
    // isFile() follows a symbolic link and is true only for a regular file, so folders,
    // devices, sockets and pipes all fall out here.
    if (!info.isFile()) return false;
    return !info.fileName().startsWith(QLatin1Char('.'));
}

QString FromUTF8(const QByteArray& bytes) {
    if (bytes.isEmpty()) {
        // Zero bytes is the one input the system's UTF-8 conversion refuses; it reports it
        // as an invalid parameter, error code 87, and the description names that code.
        throw RoutineError(kFromUtf8ErrorNumber, QStringLiteral("FromUTF8"),
                           QStringLiteral("Failed to decode string, system error 87"));
    }
    // Every byte counts: a leading byte-order mark is kept as U+FEFF rather than dropped,
    // which QString::fromUtf8 would do. Malformed sequences become U+FFFD.
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::ConvertInitialBom |
                                                       QStringConverter::Flag::Stateless);
    return decoder.decode(bytes);
}

QByteArray ToUTF8(const QString& text) {
    return text.toUtf8();
}

}  // namespace lumidot
