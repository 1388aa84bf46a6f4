// SPDX-License-Identifier: MIT
// What went wrong stands twice: with its words where it happened, and by its name at the end, where a reader looks
// first.

#include "report/Report.h"

#include <sstream>

namespace testreport {

namespace {

void WriteList(std::ostream& out, const char* title, const std::vector<std::string>& lines) {
    if (lines.empty()) return;
    out << '\n' << title << '\n';
    for (const std::string& line : lines) out << "  " << line << '\n';
}

void WriteIndented(std::ostream& out, const std::string& words) {
    std::istringstream lines(words);
    for (std::string line; std::getline(lines, line);) out << "      " << line << '\n';
}

}  // namespace

void CReport::Fact(const std::string& name, const std::string& text) {
    out << name << ": " << text << '\n' << std::flush;
}

void CReport::BeginProgram(const std::string& program) {
    current = program;
    out << '\n' << program << '\n' << std::flush;
}

void CReport::Add(const std::string& suite, const SuiteResult& result, const std::vector<std::string>& pictures) {
    passed += result.passed;
    out << (result.failed.empty() ? "  passed  " : "  FAILED  ") << suite << " (" << result.passed << " passed, "
        << result.failed.size() << " failed)\n";
    for (const FailedTest& test : result.failed) {
        out << "    " << test.name << '\n';
        WriteIndented(out, test.words);
        failed.push_back(current + ": " + test.name);
    }
    for (const std::string& picture : pictures) out << "    picture: " << picture << '\n';
    out << std::flush;
    for (const std::string& test : result.notRun) LeaveOut(current + ": " + test, "the program ended before it");
    for (const std::string& line : result.underWineAlone) NoteWineAlone(current + ": " + line);
}

void CReport::LeaveOut(const std::string& what, const std::string& why) {
    leftOut.push_back(what + ": " + why);
}

void CReport::NoteWineAlone(const std::string& what) {
    wineAlone.push_back(what);
}

bool CReport::End() {
    WriteList(out, "Holds under Wine alone, and is looked at there alone:", wineAlone);
    WriteList(out, "Not run:", leftOut);
    WriteList(out, "Failed:", failed);
    out << '\n' << passed << " tests passed, " << failed.size() << " failed.\n" << std::flush;
    return failed.empty() && passed > 0 && out.good();
}

}  // namespace testreport
