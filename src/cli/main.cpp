// lumidot-cli: the program's messages, files and explanations from the command line.
#include <QCoreApplication>
#include <cstdio>

#include "cli/cli_io.h"
#include "cli/cli_options.h"
#include "cli/commands.h"
#include "codec/code_page.h"

int main(int argc, char** argv) {
    // Qt Core alone: the arguments in the locale's encoding, files, JSON; no display needed.
    QCoreApplication app(argc, argv);
    // The preferences are the window's: send goes to the port chosen in its MIDI menu.
    QCoreApplication::setApplicationName(QStringLiteral("Lumidot"));
    using namespace lumidot::cli;
    const auto parsed = ParseCommandLine(QCoreApplication::arguments());
    if (const auto* usage = std::get_if<UsageError>(&parsed)) {
        PrintError(usage->message);
        return kUsageError;
    }
    const Options& options = std::get<Options>(parsed);
    // Chosen once, as the window chooses it at start.
    const std::string codePage = lumidot::SystemAnsiCodePage();
    switch (options.command) {
        case Command::Help:
            PrintOut(HelpText());
            return kSuccess;
        case Command::Version:
            PrintOut(QStringLiteral("lumidot-cli " LUMIDOT_VERSION "\n"));
            return kSuccess;
        case Command::Text:
        case Command::Display:
        case Command::Store:
            return Compose(options, codePage);
        case Command::Describe:
            return Describe(options, codePage);
        case Command::Repair:
            return Repair(options);
        case Command::Ports:
            return Ports(options);
        case Command::Send:
            return Send(options);
    }
    return kUsageError;
}
