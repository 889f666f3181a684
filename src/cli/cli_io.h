// Reading and writing files for lumidot-cli, and its one-line reports on standard error.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

#include "decode/hex_digits.h"
#include "files/file_problem.h"

namespace lumidot::cli {

// The whole content of a file, or of standard input for "-". Nothing, with error set, when
// it cannot be read.
std::optional<QByteArray> ReadInput(const QString& path, QString& error);
// The same, saying why on standard error when the input cannot be read.
std::optional<QByteArray> ReadInputOrSay(const QString& path);

// Writes a whole file at once: a file that exists is replaced only when the new one is
// complete. False, with error set, when it cannot be written.
bool WriteOutput(const QString& path, const QByteArray& bytes, QString& error);

// The name a report uses for a path ("standard input" for "-").
QString DisplayName(const QString& path);

// Text on standard output, in UTF-8.
void PrintOut(const QString& text);

// "lumidot-cli: " and the text, as one line on standard error.
void PrintError(const QString& text);

// Why hex text holds no messages to read, in the words of the window's refusals.
QString HexRefusal(HexCheck check);

// Reports every problem of the file called name on standard error, one line each with its
// offset; true when there were any.
bool ReportProblems(const QString& name, const std::vector<FileProblem>& problems,
                    const std::optional<FileProblem>& error);

}  // namespace lumidot::cli
