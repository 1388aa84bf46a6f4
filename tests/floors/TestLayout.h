// SPDX-License-Identifier: MIT
// Which sources have a test of their name, and which files a document names.

#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace floors {

/// The sources below `root` that have no test of their name, as paths below it. The test of src/text/Utf8.cpp is
/// tests/text/Utf8_test.cpp, that of tools/rekatool/RateGrid.cpp tests/tools/rekatool/RateGrid_test.cpp. A header that
/// has a source of its name beside it goes with that; one without counts by itself.
std::set<std::string> FindSourcesWithoutTest(const std::filesystem::path& root);

/// The files that a document names in backticks by their paths below the repository: of the sources if `top` is one of
/// "src", "tools" and "examples", of the tests if it is "tests".
std::set<std::string> ReadNamedFiles(const std::filesystem::path& document, const std::string& top);

}  // namespace floors
