// SPDX-License-Identifier: MIT
// What test programs print, as the report of a run on Windows reads it.

#include "report/TestOutput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace testreport {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TestListing, TellsItsSuites) {
    EXPECT_THAT(SuitesOf("Running main() from file.cc\r\nUtf8.\r\n  IsRead\r\n  Rows/0  # GetParam() = 1.\r\n"
                         "Table/ParseErrors.\r\n  Give/Blanks\r\nTyped/0.  # TypeParam = int\r\n  X\r\n.\r\n"),
                ElementsAre("Utf8", "Table/ParseErrors", "Typed/0"));
    EXPECT_THAT(SuitesOf(""), IsEmpty());
}

TEST(TestListing, TellsTheTestsOfASuite) {
    const std::string listing =
        "Running main() from file.cc\r\nUtf8.\r\n  IsRead\r\n  IsWritten\r\n"
        "Table/Utf8.  # TypeParam = int\r\n  Gives/0  # GetParam() = 1.\r\n";
    EXPECT_THAT(TestsOf(listing, "Utf8"), ElementsAre("Utf8.IsRead", "Utf8.IsWritten"));
    EXPECT_THAT(TestsOf(listing, "Table/Utf8"), ElementsAre("Table/Utf8.Gives/0"));
    EXPECT_THAT(TestsOf(listing, "Utf"), IsEmpty());
}

TEST(TestOutput, CountsWhatPassed) {
    const SuiteResult result = ReadTestOutput("Utf8", {},
                                              "[==========] Running 2 tests\r\n[ RUN      ] Utf8.Reads\r\n"
                                              "[       OK ] Utf8.Reads (0 ms)\r\n[ RUN      ] Utf8.Writes\r\n"
                                              "[       OK ] Utf8.Writes (0 ms)\r\n[  PASSED  ] 2 tests.\r\n",
                                              "");
    EXPECT_EQ(result.passed, 2);
    EXPECT_THAT(result.failed, IsEmpty());
    EXPECT_THAT(result.underWineAlone, IsEmpty());
}

TEST(TestOutput, HasTheWordsOfWhatFailed) {
    const SuiteResult result =
        ReadTestOutput("Table/Numbers", {},
                       "[ RUN      ] Table/Numbers.Are/Small\nin.cpp:3: Failure\n[  FAILED  ] is printed\n"
                       "[  FAILED  ] Table/Numbers.Are/Small, where GetParam() = 3 (7 ms)\n"
                       "[ RUN      ] Table/Numbers.Are/Smaller\n[       OK ] Table/Numbers.Are/Smaller (0 ms)\n"
                       "[ RUN      ] Table/Numbers.Are/Large\n[  FAILED  ] Table/Numbers.Are/Larger\n"
                       "[  FAILED  ] Table/Numbers.Are/Large (1 ms)\n 2 FAILED TESTS\n",
                       "the program ended with status 1");
    EXPECT_EQ(result.passed, 1);
    ASSERT_EQ(result.failed.size(), 2U);
    EXPECT_EQ(result.failed[0].name, "Table/Numbers.Are/Small");
    EXPECT_EQ(result.failed[0].words, "in.cpp:3: Failure\n[  FAILED  ] is printed\n");
    EXPECT_EQ(result.failed[1].name, "Table/Numbers.Are/Large");
    EXPECT_EQ(result.failed[1].words, "[  FAILED  ] Table/Numbers.Are/Larger\n");
}

TEST(TestOutput, KnowsATestThatCrashed) {
    const SuiteResult result =
        ReadTestOutput("A", {}, "[ RUN      ] A.B\n[       OK ] A.B\n[ RUN      ] A.C\nlast words", "it took too long");
    EXPECT_EQ(result.passed, 1);
    ASSERT_EQ(result.failed.size(), 1U);
    EXPECT_EQ(result.failed[0].name, "A.C");
    EXPECT_EQ(result.failed[0].words, "last words\nin this test it took too long\n");
    EXPECT_EQ(ReadTestOutput("A", {}, "[ RUN      ] A.C\n", "").failed.at(0).words, "in this test the program ended\n");
}

TEST(TestOutput, NamesWhatACrashKeptFromRunning) {
    const std::vector<std::string> tests = {"A.B", "A.C", "A.D", "A.E"};
    const SuiteResult crashed =
        ReadTestOutput("A", tests, "[ RUN      ] A.B\n[       OK ] A.B\n[ RUN      ] A.C\n", "it crashed");
    EXPECT_THAT(crashed.notRun, ElementsAre("A.D", "A.E"));
    ASSERT_EQ(crashed.failed.size(), 1U);
    EXPECT_EQ(crashed.failed[0].name, "A.C");
    const SuiteResult quiet = ReadTestOutput("A", tests, "[ RUN      ] A.B\n[       OK ] A.B\n", "");
    EXPECT_THAT(quiet.notRun, ElementsAre("A.C", "A.D", "A.E"));
    ASSERT_EQ(quiet.failed.size(), 1U);
    EXPECT_EQ(quiet.failed[0].name, "A");
    EXPECT_EQ(quiet.failed[0].words, "the program ended before the last test\n");
    EXPECT_THAT(ReadTestOutput("A", {"A.B"}, "[ RUN      ] A.B\n[       OK ] A.B\n", "").notRun, IsEmpty());
}

TEST(TestOutput, KnowsAProgramThatFailsBehindItsTests) {
    const SuiteResult result =
        ReadTestOutput("A", {}, "[ RUN      ] A.B\n[       OK ] A.B (0 ms)\n[  FAILED  ] something is still alive\n",
                       "it ended with 1");
    EXPECT_EQ(result.passed, 1);
    ASSERT_EQ(result.failed.size(), 1U);
    EXPECT_EQ(result.failed[0].name, "A");
    EXPECT_EQ(result.failed[0].words,
              "[ RUN      ] A.B\n[       OK ] A.B (0 ms)\n[  FAILED  ] something is still alive\nit ended with 1\n");
    std::string many;
    for (int i = 0; i < 30; ++i) many += std::to_string(i) + "\n";
    EXPECT_TRUE(ReadTestOutput("A", {}, many, "it ended").failed.at(0).words.starts_with("10\n"));
}

TEST(TestOutput, CountsASuiteWithoutTestsAsFailed) {
    const SuiteResult result = ReadTestOutput("A", {}, "[==========] 0 tests ran.\n", "");
    ASSERT_EQ(result.failed.size(), 1U);
    EXPECT_EQ(result.failed[0].name, "A");
    EXPECT_EQ(result.failed[0].words, "no test ran\n");
}

TEST(TestOutput, NamesWhatHoldsUnderWineAlone) {
    const SuiteResult result = ReadTestOutput("A", {},
                                              "[WINE ALONE] outside of any test\n[ RUN      ] A.B\n"
                                              "[WINE ALONE] nothing else writes\n[WINE ALONE] nothing else writes\n"
                                              "[       OK ] A.B (0 ms)\n",
                                              "");
    EXPECT_EQ(result.passed, 1);
    EXPECT_THAT(result.underWineAlone, ElementsAre("A.B: nothing else writes"));
}

}  // namespace
}  // namespace testreport
