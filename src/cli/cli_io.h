// Reading and writing files for lumidot-cli, and its one-line reports on standard error.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace lumidot::cli {

// The whole content of a file, or of standard input for "-". Nothing, with error set, when
// it cannot be read.
std::optional<QByteArray> ReadInput(const QString& path, QString& error);

// Writes a whole file at once: a file that exists is replaced only when the new one is
// complete. False, with error set, when it cannot be written.
bool WriteOutput(const QString& path, const QByteArray& bytes, QString& error);

// The name a report uses for a path ("standard input" for "-").
QString DisplayName(const QString& path);

// Text on standard output, in UTF-8.
void PrintOut(const QString& text);

// "lumidot-cli: " and the text, as one line on standard error.
void PrintError(const QString& text);

}  // namespace lumidot::cli
