// Where the picture of a store message comes from.
#pragma once

#include <QString>
#include <optional>

#include "codec/graphic_page.h"
#include "pictures/picture_conversion.h"

namespace lumidot::cli {

// The picture named on the command line (a file, or "-" for standard input): an image file
// in any format Qt reads, converted as the window's import converts it with options, or a
// text of 16 lines of 16 characters, '#' for a dot that is on and '.' for one that is off,
// top line first. optionsGiven: the options were asked for, which only an image can honour.
// Nothing, with error set to one line that says what is wrong and where, when it is neither.
std::optional<Page> ReadPicture(const QString& path, const PictureOptions& options,
                                bool optionsGiven, QString& error);

}  // namespace lumidot::cli
