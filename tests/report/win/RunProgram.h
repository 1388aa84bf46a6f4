// SPDX-License-Identifier: MIT
// A program run to its end, with a limit of time, and what it printed.

#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace testreport {

struct Ended {
    DWORD startError = ERROR_SUCCESS;  // why it could not be started
    std::string ending;                // as words, empty for status 0
    std::string output;
};

/// Whether it could not be started since it is for another kind of Windows.
bool IsOfOtherWidth(DWORD startError);

/// Runs `program` in `folder`, which is made if it isn't there, for `mostSeconds` at most.
/// What it has started ends with it.
Ended RunProgram(const std::filesystem::path& program, const std::wstring& arguments,
                 const std::filesystem::path& folder, unsigned mostSeconds = 600);

}  // namespace testreport
