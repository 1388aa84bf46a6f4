// SPDX-License-Identifier: MIT
// What a document quotes of the source.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace floors {

/// A piece of code in a document, and the file that it is said to be from.
struct Quote {
    std::string file;  // empty where no file is named before it
    std::string code;  // whole lines
    bool operator==(const Quote&) const = default;
};

/// The pieces between ```cpp and ```, in their order. The file of one is the path below src/ or tests/ that was last
/// named in backticks.
std::vector<Quote> ReadQuotes(const std::filesystem::path& document);

}  // namespace floors
