// SPDX-License-Identifier: MIT
// The report of a run of the tests on somebody's Windows: one text, written as the run goes, so that a run that is
// interrupted leaves what it has found.

#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "report/TestOutput.h"

namespace testreport {

class CReport {
public:
    /// Writes to `stream`, which outlives the report. Lines end as the stream ends them.
    explicit CReport(std::ostream& stream) : out(stream) {}

    /// A line of the head, such as "Code page" and "1252".
    void Fact(const std::string& name, const std::string& text);
    /// What follows was run by this program, such as "x64 reka_tests".
    void BeginProgram(const std::string& program);
    /// A suite of it, with the pictures that its failures left.
    void Add(const std::string& suite, const SuiteResult& result, const std::vector<std::string>& pictures = {});
    /// What wasn't run, and why.
    void LeaveOut(const std::string& what, const std::string& why);
    /// What holds under Wine alone.
    void NoteWineAlone(const std::string& what);

    /// The sums. True if all passed, something ran, and the stream took it all.
    bool End();

private:
    std::ostream& out;
    std::string current;
    int passed = 0;
    std::vector<std::string> failed;
    std::vector<std::string> leftOut;
    std::vector<std::string> wineAlone;
};

}  // namespace testreport
