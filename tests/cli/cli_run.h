// Runs the real lumidot-cli in a folder of its own and collects what it printed.
#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <ostream>

#include "support/qt_printers.h"

namespace lumidot::testing {

struct CliRun {
    int status = -1;
    QString out;
    QString err;
};

// The environment with only LANG choosing the locale, which picks the LCD text's code page.
inline QProcessEnvironment LocaleEnvironment(const QString& lang) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LC_ALL"));
    environment.remove(QStringLiteral("LC_CTYPE"));
    environment.insert(QStringLiteral("LANG"), lang);
    return environment;
}

inline CliRun RunCli(const QString& folder, const QStringList& args, const QByteArray& input = {},
                     const QString& lang = QStringLiteral("C.UTF-8")) {
    QProcess cli;
    cli.setProcessEnvironment(LocaleEnvironment(lang));
    cli.setWorkingDirectory(folder);
    cli.start(QStringLiteral(LUMIDOT_CLI_PATH), args);
    if (!cli.waitForStarted(10000)) {
        ADD_FAILURE() << "lumidot-cli does not start: " << cli.errorString().toStdString();
        return {};
    }
    cli.write(input);
    cli.closeWriteChannel();
    if (!cli.waitForFinished(60000)) ADD_FAILURE() << "lumidot-cli did not finish";
    return {cli.exitStatus() == QProcess::NormalExit ? cli.exitCode() : -1,
            QString::fromUtf8(cli.readAllStandardOutput()),
            QString::fromUtf8(cli.readAllStandardError())};
}

// A command line run by bash in folder with this PATH; standard error goes where standard
// output goes, as in a terminal.
inline CliRun RunShell(const QString& folder, const QString& command, const QString& path) {
    QProcess shell;
    QProcessEnvironment environment = LocaleEnvironment(QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("PATH"), path);
    shell.setProcessEnvironment(environment);
    shell.setWorkingDirectory(folder);
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(QStringLiteral("/bin/bash"), {QStringLiteral("-c"), command});
    shell.closeWriteChannel();
    if (!shell.waitForFinished(60000))
        ADD_FAILURE() << "bash did not finish: " << command.toStdString();
    return {shell.exitCode(), QString::fromUtf8(shell.readAllStandardOutput()), QString()};
}

}  // namespace lumidot::testing
