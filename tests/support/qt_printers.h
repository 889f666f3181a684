// Lets GoogleTest show Qt strings as text in failure messages, with line breaks and tabs
// written as \r, \n and \t, instead of as raw bytes.
#pragma once

#include <QColor>
#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
    QString shown = text;
    shown.replace('\\', "\\\\").replace('\r', "\\r").replace('\n', "\\n").replace('\t', "\\t");
    *out << '"' << shown.toStdString() << '"';
}

inline void PrintTo(const QColor& colour, std::ostream* out) {
    *out << colour.name(QColor::HexArgb).toStdString();
}
