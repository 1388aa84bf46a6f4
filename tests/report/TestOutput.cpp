// SPDX-License-Identifier: MIT
// A test's words are the lines between the one that says that it runs and the one that says how it ended. Windows ends
// lines with two characters, of which the first is dropped.

#include "report/TestOutput.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <utility>

namespace testreport {

namespace {

constexpr std::string_view runMark = "[ RUN      ] ";
constexpr std::string_view passMark = "[       OK ] ";
constexpr std::string_view failMark = "[  FAILED  ] ";
constexpr std::string_view testIndent = "  ";
constexpr std::size_t mostLastLines = 20;

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// Whether the line says that of the test: a blank, a comma or nothing follows the name.
bool Tells(std::string_view line, std::string_view mark, const std::string& test) {
    if (!line.starts_with(mark) || !line.substr(mark.size()).starts_with(test)) return false;
    const std::string_view rest = line.substr(mark.size() + test.size());
    return rest.empty() || rest.front() == ' ' || rest.front() == ',';
}

std::string_view FirstWord(std::string_view line) {
    return line.substr(0, line.find(' '));  // a remark on the type or on the parameter may follow
}

/// The suite that a line of the list names; empty if it names none, such as that of a test, which is indented.
std::string_view SuiteIn(std::string_view line) {
    const std::string_view word = FirstWord(line);
    return word.ends_with('.') ? word.substr(0, word.size() - 1) : std::string_view();
}

std::string Joined(std::vector<std::string_view>::const_iterator from,
                   std::vector<std::string_view>::const_iterator to) {
    std::string text;
    for (; from != to; ++from) text += std::string(*from) + "\n";
    return text;
}

}  // namespace

std::vector<std::string> SuitesOf(std::string_view listing) {
    std::vector<std::string> suites;
    for (const std::string_view line : LinesOf(listing)) {
        if (const std::string_view suite = SuiteIn(line); !suite.empty()) suites.emplace_back(suite);
    }
    return suites;
}

std::vector<std::string> TestsOf(std::string_view listing, std::string_view suite) {
    std::vector<std::string> tests;
    std::string_view current;
    for (const std::string_view line : LinesOf(listing)) {
        if (!line.starts_with(testIndent)) {
            current = SuiteIn(line);
        } else if (current == suite) {
            const std::string_view test = FirstWord(line.substr(testIndent.size()));
            if (!test.empty()) tests.push_back(std::string(suite) + "." + std::string(test));
        }
    }
    return tests;
}

SuiteResult ReadTestOutput(std::string_view suite, const std::vector<std::string>& tests, std::string_view output,
                           const std::string& ending) {
    SuiteResult result;
    const std::vector<std::string_view> lines = LinesOf(output);
    std::string test;  // that runs; empty between two
    std::set<std::string> begun;
    auto begin = lines.begin();
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        if (line->starts_with(runMark)) {
            test = line->substr(runMark.size());
            begun.insert(test);
            begin = line + 1;
        } else if (test.empty()) {
            continue;
        } else if (Tells(*line, passMark, test)) {
            ++result.passed;
            test.clear();
        } else if (Tells(*line, failMark, test)) {
            result.failed.push_back({test, Joined(begin, line)});
            test.clear();
        } else if (line->starts_with(wineAloneMark)) {
            std::string told = test + ": " + std::string(line->substr(wineAloneMark.size()));
            if (std::count(result.underWineAlone.begin(), result.underWineAlone.end(), told) == 0) {
                result.underWineAlone.push_back(std::move(told));
            }
        }
    }
    std::copy_if(tests.begin(), tests.end(), std::back_inserter(result.notRun),
                 [&](const std::string& listed) { return !begun.contains(listed); });
    if (!test.empty()) {
        const std::string how = ending.empty() ? "the program ended" : ending;
        result.failed.push_back({test, Joined(begin, lines.end()) + "in this test " + how + "\n"});
    } else if (!ending.empty() && result.failed.empty()) {
        const auto last = lines.end() - static_cast<std::ptrdiff_t>(std::min(lines.size(), mostLastLines));
        result.failed.push_back({std::string(suite), Joined(last, lines.end()) + ending + "\n"});
    } else if (result.passed == 0 && result.failed.empty()) {
        result.failed.push_back({std::string(suite), "no test ran\n"});
    } else if (!result.notRun.empty() && result.failed.empty()) {
        result.failed.push_back({std::string(suite), "the program ended before the last test\n"});
    }
    return result;
}

}  // namespace testreport
