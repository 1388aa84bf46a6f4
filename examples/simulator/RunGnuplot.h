// SPDX-License-Identifier: MIT
// The drawing program, which is one of its own.

#pragma once

#include <string>

namespace rekasim {

/// Runs gnuplot with `script` on its standard input. False if there is none, or it didn't take the script.
bool RunGnuplot(const std::string& script);

}  // namespace rekasim
