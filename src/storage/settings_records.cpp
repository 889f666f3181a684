#include "storage/settings_records.h"

#include <QStringDecoder>
#include <QtEndian>

#include "storage/text_helpers.h"

namespace lumidot {

void WriteStoredString(QByteArray& file, const QString& text) {
    const QByteArray bytes = text.isEmpty() ? QByteArray() : ToUTF8(text);
    char length[4];
    qToLittleEndian<qint32>(static_cast<qint32>(bytes.size()), length);
    file.append(length, 4);
    file.append(bytes);
}

std::optional<QString> ReadStoredString(const QByteArray& file, qsizetype& offset) {
    if (file.size() - offset < 4) return std::nullopt;
    const qint32 length = qFromLittleEndian<qint32>(file.constData() + offset);
    if (length < 0 || length > file.size() - offset - 4) return std::nullopt;
    const QByteArray bytes = file.mid(offset + 4, length);
    offset += 4 + length;
    if (length == 0) return QString();
    // A damaged text would put replacement characters into the user's layout; better to
    // keep the field's own value.
    QStringDecoder strict(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString checked = strict(bytes);
    if (strict.hasError()) return std::nullopt;
    return FromUTF8(bytes);
}

QByteArray BuildSettingsBytes(const LayoutTexts& texts) {
    QByteArray file;
    for (const QString& text : texts) WriteStoredString(file, text);
    return file;
}

std::array<std::optional<QString>, 3> ReadSettingsBytes(const QByteArray& file) {
    std::array<std::optional<QString>, 3> texts;
    qsizetype offset = 0;
    for (std::optional<QString>& text : texts) {
        text = ReadStoredString(file, offset);
        if (!text) break;
    }
    return texts;
}

}  // namespace lumidot
