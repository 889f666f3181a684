#include "storage/atomic_file.h"

#include <QSaveFile>

namespace lumidot {

bool WriteFileAtomically(const QString& path, const QByteArray& data, QString* error,
                         const BeforeCommit& beforeCommit) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error) *error = file.errorString();
        return false;
    }
    if (file.write(data) != data.size()) {
        if (error) *error = file.errorString();
        file.cancelWriting();
        return false;
    }
    if (beforeCommit && !beforeCommit(path)) {
        if (error) *error = QStringLiteral("the save was interrupted");
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        if (error) *error = file.errorString();
        return false;
    }
    return true;
}

}  // namespace lumidot
