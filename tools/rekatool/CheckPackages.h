// SPDX-License-Identifier: MIT
// All that is wrong with the packages of a file, or looks as if it were.

#pragma once

#include <string>
#include <vector>

#include "PackageFile.h"

namespace rekatool {

struct Finding {
    std::string package;   // its name, or its place in the file where it has none; "file" for what is in no package
    std::string reaction;  // empty for what concerns the whole package
    bool isFault = false;  // or a warning
    std::string text;      // on one line
};

/// "PACKAGE: reaction ID: fault: TEXT".
std::string TextOf(const Finding& finding);

/// Faults are what keeps the editor from accepting a package, with its texts, and blocks that can't be read. Warnings
/// are the editor's questions and warnings, and what else is likely not meant: see docs/rekatool.md. The packages are
/// worked on as copies.
std::vector<Finding> CheckPackages(const PackageFile& file);

}  // namespace rekatool
