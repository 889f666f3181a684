// File test and UTF-8 conversions used by the settings and page-memory files.
#pragma once

#include <QByteArray>
#include <QString>
#include <stdexcept>

namespace lumidot {

// An error raised by a routine that cannot do its work: a number, the routine that
// raised it and a description, for the caller to handle.
class RoutineError : public std::runtime_error {
public:
    RoutineError(qint32 number, QString source, QString description);
    qint32 number() const { return number_; }
    const QString& source() const { return source_; }
    const QString& description() const { return description_; }

private:
    qint32 number_;
    QString source_;
    QString description_;
};

// Raised by FromUTF8 when there is nothing to convert.
constexpr qint32 kFromUtf8ErrorNumber = -2147171566;  // 0x8004C312

// True only for an existing ordinary file that is not hidden. False for an empty path,
// a path ending in '/', a folder, a hidden file (name starting with '.') and anything
// that is not a regular file (devices, sockets, pipes).
bool FileExists(const QString& path);

// UTF-8 bytes to text; malformed sequences become U+FFFD. Throws RoutineError (source
// "FromUTF8") for an empty array.
QString FromUTF8(const QByteArray& bytes);

// Text to UTF-8 bytes.
QByteArray ToUTF8(const QString& text);

}  // namespace lumidot
