// SPDX-License-Identifier: MIT
// The program without its start: examines the computer, and tells what is well and what isn't.

#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "Computer.h"

namespace rekadoctor {

/// Runs with UTF-8 arguments. Exit status: 0 all is well for programs of this program's width; 1 something is wrong for
/// them; 2 misuse, or the output can't be written, which is told in a line on `err`.
int RunRekadoctor(const std::vector<std::string>& arguments, CComputer& computer, std::ostream& out, std::ostream& err);

}  // namespace rekadoctor
