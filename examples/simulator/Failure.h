// SPDX-License-Identifier: MIT
// What went wrong, for the one line that a user reads.

#pragma once

#include <string>

namespace rekasim {

/// `text` is UTF-8. The others are known when an object told its failure through the error interfaces: which method of
/// which interface failed, and the short name of the failure.
struct Failure {
    std::string text;
    std::string scope;
    std::string interfaceName;
    std::string name = {};
};

}  // namespace rekasim
