// Writing a whole file so that it is either the old file or the new one, never half.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

namespace lumidot {

// Runs just before the new file replaces the old one; returning false abandons the write
// as a crash or a full disk at that moment would. Lets tests interrupt a save.
using BeforeCommit = std::function<bool(const QString& path)>;

// Writes data to a temporary file beside path and renames it over path. On failure the
// old file is left as it was and error says why.
bool WriteFileAtomically(const QString& path, const QByteArray& data, QString* error,
                         const BeforeCommit& beforeCommit = {});

}  // namespace lumidot
