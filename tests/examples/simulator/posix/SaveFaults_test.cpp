// SPDX-License-Identifier: MIT
// Each call of the system fails in turn while rekasim saves a document: the old one stays whole, and rekasim says so.

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "DocumentFixture.h"
#include "support/posix/FailingCalls.h"

namespace rekasim {

namespace {

TEST(SaveFaults, LeaveTheOldDocumentOrTheNewOne) {
    const CTemporaryFile target("saved.json", "");
    const std::vector<std::string> arguments = {"save", "--document", ExamplePath("water-gas-shift.json"), "--to",
                                                target.Path()};
    ASSERT_EQ(RunProgram(arguments).status, 0);
    const std::string saved = target.Content();
    std::unique_ptr<CTemporaryFile> old;
    RunResult result;
    int failures = 0;
    const int calls = reka::test::ForEachFileCall(
        [&] { old = std::make_unique<CTemporaryFile>("saved.json", "old"); },
        [&] {
            std::vector<std::string> again = arguments;
            again.back() = old->Path();
            result = RunProgram(again);
        },
        [&](int n, bool isReached) {
            SCOPED_TRACE("call " + std::to_string(n));
            EXPECT_TRUE(isReached || result.status == 0);
            const bool isSaved = result.status == 0;
            failures += !isSaved;
            EXPECT_EQ(old->Content(), isSaved ? saved : "old");
            EXPECT_EQ(result.status, isSaved ? 0 : 1);
            EXPECT_EQ(result.err,
                      isSaved ? "" : "rekasim: " + old->Path() + ": the file can't be written: Input/output error\n");
            EXPECT_FALSE(std::filesystem::exists(old->Path() + ".new0"));
        });
    EXPECT_EQ(calls, 8);
    EXPECT_EQ(failures, 5);
}

}  // namespace

}  // namespace rekasim
