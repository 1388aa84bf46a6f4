// SPDX-License-Identifier: MIT
// The report as a reader sees it.

#include "report/Report.h"

#include <gtest/gtest.h>

#include <sstream>

namespace testreport {
namespace {

TEST(TestReport, TellsWhatWasFound) {
    std::ostringstream out;
    CReport report(out);
    report.Fact("Code page", "1252");
    report.BeginProgram("x64 reka_tests");
    report.Add("Utf8", {3, {}, {"Utf8.Reads: it is quiet"}});
    report.Add("Dialog", {1, {{"Dialog.Opens", "a.cpp:1\nnot open\n"}}, {}, {"Dialog.Closes"}},
               {"pictures\\x64-Dialog.bmp"});
    report.LeaveOut("x86", "this Windows runs no such programs");
    report.NoteWineAlone("the code page 932");
    EXPECT_FALSE(report.End());
    EXPECT_EQ(out.str(),
              "Code page: 1252\n"
              "\n"
              "x64 reka_tests\n"
              "  passed  Utf8 (3 passed, 0 failed)\n"
              "  FAILED  Dialog (1 passed, 1 failed)\n"
              "    Dialog.Opens\n"
              "      a.cpp:1\n"
              "      not open\n"
              "    picture: pictures\\x64-Dialog.bmp\n"
              "\n"
              "Holds under Wine alone, and is looked at there alone:\n"
              "  x64 reka_tests: Utf8.Reads: it is quiet\n"
              "  the code page 932\n"
              "\n"
              "Not run:\n"
              "  x64 reka_tests: Dialog.Closes: the program ended before it\n"
              "  x86: this Windows runs no such programs\n"
              "\n"
              "Failed:\n"
              "  x64 reka_tests: Dialog.Opens\n"
              "\n"
              "4 tests passed, 1 failed.\n");
}

TEST(TestReport, IsGoodWhereAllPassed) {
    std::ostringstream out;
    CReport report(out);
    report.BeginProgram("x64 reka_tests");
    report.Add("Utf8", {3, {}, {}});
    EXPECT_TRUE(report.End());
    EXPECT_EQ(out.str(), "\nx64 reka_tests\n  passed  Utf8 (3 passed, 0 failed)\n\n3 tests passed, 0 failed.\n");
}

TEST(TestReport, IsNotGoodWhereNothingRanOrItCouldNotBeWritten) {
    std::ostringstream out;
    EXPECT_FALSE(CReport(out).End());
    std::ostringstream full;
    CReport report(full);
    report.Add("Utf8", {3, {}, {}});
    full.setstate(std::ios::badbit);
    EXPECT_FALSE(report.End());
}

}  // namespace
}  // namespace testreport
