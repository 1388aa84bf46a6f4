// SPDX-License-Identifier: MIT
// The words of a file that can't be replaced; that one can be is the platform's to do (platform/Files_test.cpp).

#include "packagetext/ReplaceFile.h"

#include <gtest/gtest.h>

#include "support/FakeFiles.h"

namespace packagetext {

namespace {

TEST(ReplaceFile, PutsTheContentThere) {
    reka::test::CFakeFiles files;
    std::string errorText = "as it was";
    EXPECT_TRUE(ReplaceFile(files, "\xCE\x94.json", std::string("a\0b", 3), errorText));
    EXPECT_EQ(files.entries[u"\u0394.json"].bytes, (std::vector<std::uint8_t>{'a', 0, 'b'}));
    EXPECT_EQ(errorText, "as it was");
}

TEST(ReplaceFile, RefusesANameThatWouldBecomeAnother) {
    reka::test::CFakeFiles files;
    std::string errorText;
    EXPECT_FALSE(ReplaceFile(files, "a\xFF", std::string("new"), errorText));
    EXPECT_EQ(errorText, "a\xFF: the file can't be written: its name isn't UTF-8");
    EXPECT_TRUE(files.entries.empty());
}

TEST(ReplaceFile, SaysWhichFileAndWhy) {
    reka::test::CFakeFiles files;
    files.entries[u"a"] = {{'o', 'l', 'd'}, 1};
    files.failAt = 1;
    std::string errorText;
    EXPECT_FALSE(ReplaceFile(files, "a", std::string("new"), errorText));
    EXPECT_EQ(errorText, "a: the file can't be written: the system's reason");  // whose own line end is gone
    EXPECT_EQ(files.entries[u"a"].bytes, (std::vector<std::uint8_t>{'o', 'l', 'd'}));
}

}  // namespace

}  // namespace packagetext
