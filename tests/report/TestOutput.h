// SPDX-License-Identifier: MIT
// What a test program prints, read: its list of suites, and how a run of one of them went. The text is read rather than
// a file of results, since a program that crashes leaves no file.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace testreport {

/// What a line begins with by which a test says that an expectation holds under Wine alone; the reason follows.
constexpr std::string_view wineAloneMark = "[WINE ALONE] ";

struct FailedTest {
    std::string name;
    std::string words;  // lines, each with its end
};

struct SuiteResult {
    int passed = 0;
    std::vector<FailedTest> failed;
    std::vector<std::string> underWineAlone;  // "Suite.Test: reason"
    std::vector<std::string> notRun = {};     // "Suite.Test", where the program ended before
};

/// The suites that a program's `--gtest_list_tests` printed, in its order, without the dot.
std::vector<std::string> SuitesOf(std::string_view listing);

/// The tests of one of them, such as "Suite.Test". One that is switched off doesn't run, which is told like a crash.
std::vector<std::string> TestsOf(std::string_view listing, std::string_view suite);

/// How the run of a suite went that printed `output` and ended as `ending` says, empty for status 0: every failure
/// counts, that of the program behind its last test under the name of `suite`. Those of `tests`, which are the suite's
/// by the program's list, that it didn't come to are told, and are a failure if nothing else is.
SuiteResult ReadTestOutput(std::string_view suite, const std::vector<std::string>& tests, std::string_view output,
                           const std::string& ending);

}  // namespace testreport
