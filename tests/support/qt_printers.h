// Lets GoogleTest show Qt strings as text in failure messages, with line breaks and tabs
// written as \r, \n and \t, instead of as raw bytes.
#pragma once

#include <QColor>
#include <QByteArray>
#include <QString>
#include <algorithm>
#include <cstdio>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
    QString shown = text;
    shown.replace('\\', "\\\\").replace('\r', "\\r").replace('\n', "\\n").replace('\t', "\\t");
    *out << '"' << shown.toStdString() << '"';
}

inline void PrintTo(const QColor& colour, std::ostream* out) {
    *out << colour.name(QColor::HexArgb).toStdString();
}

// Bytes as text with everything unprintable escaped, cut after a few hundred characters so
// that a failing comparison of whole files stays readable.
inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
    constexpr qsizetype kShown = 300;
    *out << bytes.size() << " bytes \"";
    for (qsizetype i = 0; i < std::min(bytes.size(), kShown); ++i) {
        const unsigned char c = static_cast<unsigned char>(bytes[i]);
        if (c == '\r')
            *out << "\\r";
        else if (c == '\n')
            *out << "\\n";
        else if (c >= 0x20 && c < 0x7F && c != '\\')
            *out << static_cast<char>(c);
        else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", c);
            *out << escaped;
        }
    }
    *out << (bytes.size() > kShown ? "\"..." : "\"");
}
