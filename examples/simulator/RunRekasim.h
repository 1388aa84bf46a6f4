// SPDX-License-Identifier: MIT
// The program as a function, so that a test can run it without a process.

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace rekasim {

/// Runs rekasim with its arguments (UTF-8, without the program's own name) and returns the exit status: 0, 1 after a
/// failure, which is told in one line on `err`, or 2 for a command line that can't be read. Texts on `out` and `err`
/// are UTF-8 with the decimal point, whatever the locale.
int RunRekasim(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace rekasim
