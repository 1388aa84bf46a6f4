// SPDX-License-Identifier: MIT
// Where the files are that tests read. Those of a build lie where it found or made them; those of the tests that are
// handed out lie in one folder, which the program that runs them names.

#pragma once

#include <cstdlib>
#include <string>

namespace reka::test {

/// The file or folder `built` of the build, or the one of its last name in the folder that REKA_TEST_FILES names, in
/// letters of every code page.
inline std::string TestFile(const std::string& built) {
    const char* const folder = std::getenv("REKA_TEST_FILES");
    return folder ? folder + ("/" + built.substr(built.find_last_of("/\\") + 1)) : built;
}

}  // namespace reka::test
