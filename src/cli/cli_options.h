// The command line of lumidot-cli: what to do and with which layout and output.
#pragma once

#include <QString>
#include <QStringList>
#include <variant>

#include "mainwindow/window_model.h"
#include "pictures/picture_conversion.h"

namespace lumidot::cli {

// Exit statuses.
constexpr int kSuccess = 0;
constexpr int kBadInput = 1;
constexpr int kUsageError = 2;

enum class Command { Help, Version, Text, Display, Store, Describe, Repair, Ports, Send };

struct Options {
    Command command = Command::Help;
    QStringList arguments;  // what follows the command
    ByteLayout layout;      // as the window's layout boxes take it
    QString output;         // -o: a file instead of standard output
    bool json = false;
    int page = 0;  // display (0 for none) and store
    // ports and send: the MIDI system ("alsa" or "jack"; empty for the one LUMIDOT_MIDI_API
    // or the default gives), the port, and the least pause after each message.
    QString api;
    QString port;
    int gapMs = 40;
    // How store turns an image file into a page; pictureOptions is set when any of
    // --threshold, --dither and --invert was given.
    PictureOptions picture;
    bool pictureOptions = false;
    bool thresholdGiven = false;
};

struct UsageError {
    QString message;
};

// arguments: the whole command line, the program's name first.
std::variant<Options, UsageError> ParseCommandLine(const QStringList& arguments);

// The manual page that --help prints.
QString HelpText();

}  // namespace lumidot::cli
