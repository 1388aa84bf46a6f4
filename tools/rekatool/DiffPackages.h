// SPDX-License-Identifier: MIT
// What became of packages between two files, as an engineer would tell it.

#pragma once

#include <string>
#include <vector>

#include "LoadDefinitions.h"

namespace rekatool {

/// The differences, each on one line that begins with the name of the package: "Methanol synthesis: reaction methanol:
/// coefficient of hydrogen: -3 became -2". Packages and reactions belong together by their names, compounds by their
/// names, each with the case of letters ignored, and of equal names one after the other. Stored trees count as well
/// where the compounds are the same, since a package calculates with these. What the component reads is compared, and
/// nothing else that a file may hold: the versions of blocks, bytes behind the last of them.
std::vector<std::string> DiffPackages(const Definitions& before, const Definitions& after);

}  // namespace rekatool
