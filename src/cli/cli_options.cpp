#include "cli/cli_options.h"

namespace lumidot::cli {
namespace {

struct CommandName {
    const char* name;
    Command command;
    int least;  // arguments it takes
    int most;
    const char* synopsis;
};

constexpr CommandName kCommands[] = {
    {"text", Command::Text, 1, 1, "text TEXT"},
    {"display", Command::Display, 1, 1, "display PAGE|none"},
    {"store", Command::Store, 2, 2, "store PAGE PICTURE"},
    {"describe", Command::Describe, 0, 1, "describe [FILE|-]"},
    {"repair", Command::Repair, 2, 2, "repair IN OUT"},
    {"ports", Command::Ports, 0, 0, "ports"},
    {"send", Command::Send, 1, 1, "send FILE|-"},
};

// The pause the module needs at the least, and the longest worth waiting.
constexpr int kLeastGapMs = 20;
constexpr int kMostGapMs = 500;

constexpr char kSynopsis[] = "see lumidot-cli --help";

UsageError Usage(const QString& text) {
    return {text + QStringLiteral(" (") + QLatin1String(kSynopsis) + QLatin1Char(')')};
}

// A layout text as the window's boxes take it: at most five characters.
bool SetLayoutText(QString& field, const QString& text, const char* name, UsageError& error) {
    if (text.size() > WindowModel::kLayoutBoxLength) {
        error = Usage(QStringLiteral("the %1 holds at most %2 characters, \"%3\" has %4")
                          .arg(QLatin1String(name))
                          .arg(WindowModel::kLayoutBoxLength)
                          .arg(text)
                          .arg(text.size()));
        return false;
    }
    field = text;
    return true;
}

// PREFIX,SUFFIX,SEPARATOR: the first two commas divide, so the separator may be a comma.
bool SetLayout(ByteLayout& layout, const QString& text, UsageError& error) {
    const qsizetype first = text.indexOf(QLatin1Char(','));
    const qsizetype second = first < 0 ? -1 : text.indexOf(QLatin1Char(','), first + 1);
    if (second < 0) {
        error =
            Usage(QStringLiteral("--layout takes PREFIX,SUFFIX,SEPARATOR, not \"%1\"").arg(text));
        return false;
    }
    return SetLayoutText(layout.prefix, text.left(first), "prefix", error) &&
           SetLayoutText(layout.suffix, text.mid(first + 1, second - first - 1), "suffix", error) &&
           SetLayoutText(layout.separator, text.mid(second + 1), "separator", error);
}

bool ReadPage(const QString& text, bool noneAllowed, int& page, UsageError& error) {
    if (noneAllowed && text == QLatin1String("none")) {
        page = 0;
        return true;
    }
    bool ok = false;
    page = text.toInt(&ok);
    if (!ok || page < 1 || page > 10) {
        error = Usage(QStringLiteral("PAGE is a number from 1 to 10%1, not \"%2\"")
                          .arg(noneAllowed ? QStringLiteral(" or none") : QString(), text));
        return false;
    }
    return true;
}

bool ReadThreshold(const QString& text, Options& options, UsageError& error) {
    bool ok = false;
    const int threshold = text.toInt(&ok);
    if (!ok || threshold < 0 || threshold > kMaxThreshold) {
        error =
            Usage(QStringLiteral("--threshold takes a number from 0 to 255, not \"%1\"").arg(text));
        return false;
    }
    options.picture.threshold = threshold;
    options.thresholdGiven = true;
    options.pictureOptions = true;
    return true;
}

}  // namespace

std::variant<Options, UsageError> ParseCommandLine(const QStringList& arguments) {
    Options options;
    UsageError error;
    QStringList positional;
    bool optionsEnded = false;
    bool gapGiven = false;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (optionsEnded || !argument.startsWith(QLatin1Char('-')) ||
            argument == QLatin1String("-")) {
            positional << argument;
            continue;
        }
        if (argument == QLatin1String("--")) {
            optionsEnded = true;
            continue;
        }
        if (argument == QLatin1String("-h") || argument == QLatin1String("--help")) {
            options.command = Command::Help;
            return options;
        }
        if (argument == QLatin1String("--version")) {
            options.command = Command::Version;
            return options;
        }
        if (argument == QLatin1String("--json")) {
            options.json = true;
            continue;
        }
        if (argument == QLatin1String("--dither") || argument == QLatin1String("--invert")) {
            if (argument == QLatin1String("--dither")) options.picture.tone = PictureTone::Dither;
            if (argument == QLatin1String("--invert")) options.picture.invert = true;
            options.pictureOptions = true;
            continue;
        }
        // Options with a value: "--name VALUE" or "--name=VALUE".
        QString name = argument;
        QString value;
        const qsizetype equals = argument.indexOf(QLatin1Char('='));
        const bool attached = argument.startsWith(QLatin1String("--")) && equals > 0;
        if (attached) {
            name = argument.left(equals);
            value = argument.mid(equals + 1);
        }
        static const QStringList kValued = {
            QStringLiteral("--layout"),    QStringLiteral("--prefix"), QStringLiteral("--suffix"),
            QStringLiteral("--separator"), QStringLiteral("-o"),       QStringLiteral("--output"),
            QStringLiteral("--api"),       QStringLiteral("--port"),   QStringLiteral("--gap"),
            QStringLiteral("--threshold")};
        if (!kValued.contains(name)) {
            return Usage(QStringLiteral("unknown option %1").arg(name));
        }
        if (!attached) {
            if (i + 1 >= arguments.size())
                return Usage(QStringLiteral("%1 needs a value").arg(name));
            value = arguments[++i];
        }
        bool ok = true;
        if (name == QLatin1String("--layout")) {
            ok = SetLayout(options.layout, value, error);
        } else if (name == QLatin1String("--prefix")) {
            ok = SetLayoutText(options.layout.prefix, value, "prefix", error);
        } else if (name == QLatin1String("--suffix")) {
            ok = SetLayoutText(options.layout.suffix, value, "suffix", error);
        } else if (name == QLatin1String("--separator")) {
            ok = SetLayoutText(options.layout.separator, value, "separator", error);
        } else if (name == QLatin1String("--api")) {
            options.api = value.toLower();
            if (options.api != QLatin1String("alsa") && options.api != QLatin1String("jack")) {
                return Usage(QStringLiteral("--api takes alsa or jack, not \"%1\"").arg(value));
            }
        } else if (name == QLatin1String("--port")) {
            options.port = value;
            if (value.isEmpty()) return Usage(QStringLiteral("--port needs a port's name"));
        } else if (name == QLatin1String("--gap")) {
            gapGiven = true;
            options.gapMs = value.toInt(&ok);
            if (!ok || options.gapMs < kLeastGapMs || options.gapMs > kMostGapMs) {
                return Usage(QStringLiteral("--gap takes milliseconds from %1 to %2, not \"%3\"")
                                 .arg(kLeastGapMs)
                                 .arg(kMostGapMs)
                                 .arg(value));
            }
        } else if (name == QLatin1String("--threshold")) {
            ok = ReadThreshold(value, options, error);
        } else {
            options.output = value;
        }
        if (!ok) return error;
    }

    if (positional.isEmpty()) return Usage(QStringLiteral("no command given"));
    const QString command = positional.takeFirst();
    const CommandName* found = nullptr;
    for (const CommandName& candidate : kCommands) {
        if (command == QLatin1String(candidate.name)) found = &candidate;
    }
    if (!found) return Usage(QStringLiteral("unknown command \"%1\"").arg(command));
    if (positional.size() < found->least || positional.size() > found->most) {
        return Usage(QStringLiteral("wrong number of arguments: lumidot-cli [OPTIONS] %1")
                         .arg(QLatin1String(found->synopsis)));
    }
    options.command = found->command;
    options.arguments = positional;
    if (options.command == Command::Display || options.command == Command::Store) {
        if (!ReadPage(positional[0], options.command == Command::Display, options.page, error)) {
            return error;
        }
    }
    if (!options.output.isEmpty() &&
        (options.command == Command::Describe || options.command == Command::Repair ||
         options.command == Command::Ports || options.command == Command::Send)) {
        return Usage(QStringLiteral("-o goes with text, display and store"));
    }
    const bool midi = options.command == Command::Ports || options.command == Command::Send;
    if (!options.api.isEmpty() && !midi) {
        return Usage(QStringLiteral("--api goes with ports and send"));
    }
    if (options.command != Command::Send && (!options.port.isEmpty() || gapGiven)) {
        return Usage(QStringLiteral("--port and --gap go with send"));
    }
    if (options.pictureOptions && options.command != Command::Store) {
        return Usage(QStringLiteral("--threshold, --dither and --invert go with store"));
    }
    if (options.thresholdGiven && options.picture.tone == PictureTone::Dither) {
        return Usage(QStringLiteral("--threshold and --dither exclude each other"));
    }
    return options;
}

}  // namespace lumidot::cli
