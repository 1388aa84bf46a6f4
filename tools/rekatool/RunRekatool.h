// SPDX-License-Identifier: MIT
// The program without its start: packages of files as text, and what is wrong with them.

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace rekatool {

/// Runs one command with UTF-8 arguments. Exit status: 0 done, and nothing found by a check; 1 warnings, or a file that
/// wasn't whole and of which the rest was written; 2 faults, and everything that failed or was misused, which is told
/// in a line on `err`.
int RunRekatool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace rekatool
