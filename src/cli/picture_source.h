// Where the picture of a store message comes from.
#pragma once

#include <QString>
#include <optional>

#include "codec/graphic_page.h"

namespace lumidot::cli {

// The picture named on the command line: a file (or "-" for standard input) of 16 lines of
// 16 characters, '#' for a dot that is on and '.' for one that is off, top line first.
// Nothing, with error set to one line that says where the file is wrong, when it is not one.
std::optional<Page> ReadPicture(const QString& path, QString& error);

}  // namespace lumidot::cli
