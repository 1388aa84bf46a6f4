// SPDX-License-Identifier: MIT
// All test programs of one width, run suite by suite, each in a process of its own.

#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "report/Report.h"

namespace testreport {

/// What is the same for both widths.
struct TestRun {
    std::filesystem::path top;      // where both widths' programs lie
    std::filesystem::path results;  // all that the run makes
    std::vector<std::string> only;  // parts of names, such as "x64 reka_tests/Utf8"; empty for all
    std::string whyNotRegistering;  // empty where the component may be registered
    CReport& report;
    std::ostream& progress;
};

/// Runs the programs of the width "x64" or "x86".
void RunWidth(const TestRun& run, const std::string& width);

}  // namespace testreport
