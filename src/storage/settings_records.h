// settings.bin: texts as records of a 4-byte little-endian signed length and UTF-8 bytes.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>

namespace lumidot {

// Appends one record for text (length 0 and no bytes for empty text).
void WriteStoredString(QByteArray& file, const QString& text);

// Reads the record at offset and moves offset past it. Nothing when the record cannot be
// read: the file ends inside it, its length is negative, or its text is not UTF-8. A
// record that cannot be read also hides where the next one starts.
std::optional<QString> ReadStoredString(const QByteArray& file, qsizetype& offset);

// The three texts of settings.bin: prefix, suffix and separator.
using LayoutTexts = std::array<QString, 3>;

// settings.bin as it is written: one record per text, in order.
QByteArray BuildSettingsBytes(const LayoutTexts& texts);

// The records of settings.bin in order, as far as they can be read: after the first
// record that cannot be read, the rest are empty too.
std::array<std::optional<QString>, 3> ReadSettingsBytes(const QByteArray& file);

}  // namespace lumidot
