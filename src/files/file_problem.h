// What the file readers report about a place in a file.
#pragma once

#include <cstddef>
#include <string>

namespace lumidot {

// Something wrong at a place in a file. offset counts bytes from the start of the file; the
// text says what is wrong there, in words a user can act on, without the offset itself.
struct FileProblem {
    std::size_t offset = 0;
    std::string text;
};

}  // namespace lumidot
