// settings.bin: texts as records of a 4-byte little-endian signed length and UTF-8 bytes.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace lumidot {

// Appends one record for text (length 0 and no bytes for empty text).
void WriteStoredString(QByteArray& file, const QString& text);

// Reads the record at offset and moves offset past it. Nothing when the record cannot be
// read: the file ends inside it, its length is negative, or its text is not UTF-8. A
// record that cannot be read also hides where the next one starts.
std::optional<QString> ReadStoredString(const QByteArray& file, qsizetype& offset);

}  // namespace lumidot
