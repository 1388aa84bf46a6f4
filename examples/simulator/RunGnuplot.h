// SPDX-License-Identifier: MIT
// The drawing program, which is one of its own.

#pragma once

#include <string>

namespace rekasim {

/// Runs gnuplot with `script` on its standard input; what it prints goes nowhere. False if there is none, or it didn't
/// take the script. True says nothing of the picture: gnuplot ends well on a full disk too.
bool RunGnuplot(const std::string& script);

}  // namespace rekasim
