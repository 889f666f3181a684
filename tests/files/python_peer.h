// Runs a Python script with Debian's python3 and its mido, the independent MIDI library our
// files are checked against. A test that cannot run it fails and says why.
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QString>
#include <QStringList>

namespace lumidot::testing {

// The script's standard output, or an empty list after a failure has been recorded.
inline QStringList RunPython(const char* script, const QStringList& arguments) {
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 QStringList{QStringLiteral("-c"), QString::fromUtf8(script)} + arguments);
    if (!python.waitForStarted(10000)) {
        ADD_FAILURE() << "/usr/bin/python3 does not start (scripts/install-deps installs "
                         "python3-mido): "
                      << python.errorString().toStdString();
        return {};
    }
    python.waitForFinished(120000);
    if (python.exitStatus() != QProcess::NormalExit || python.exitCode() != 0) {
        ADD_FAILURE() << "the mido script failed (is python3-mido installed?):\n"
                      << python.readAllStandardError().toStdString();
        return {};
    }
    return QString::fromUtf8(python.readAllStandardOutput())
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

}  // namespace lumidot::testing
