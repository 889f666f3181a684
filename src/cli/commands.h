// The commands of lumidot-cli. Each prints its result and its reports and returns the exit
// status.
#pragma once

#include <string>

#include "cli/cli_options.h"

namespace lumidot::cli {

// text, display and store: one message, printed as hex text or written to a file.
int Compose(const Options& options, const std::string& codePage);

// describe: every message of a file, explained.
int Describe(const Options& options, const std::string& codePage);

// repair: a file copied with its GS checksums put right.
int Repair(const Options& options);

// ports: the MIDI output ports, one a line.
int Ports(const Options& options);

// send: every message of a file to a MIDI port, paced for the module; returns once the last
// one is out.
int Send(const Options& options);

}  // namespace lumidot::cli
