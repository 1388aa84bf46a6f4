// SPDX-License-Identifier: MIT
// Columns that line up.

#include "AlignedTable.h"

#include <gtest/gtest.h>

#include <sstream>

namespace rekasim {

namespace {

TEST(AlignedTable, SetsTextsLeftAndNumbersRight) {
    std::ostringstream out;
    WriteAligned(out, {{"Name", "x"}, {}, {"a", "10.5"}, {"bcdef", "1"}}, 1, 2);
    EXPECT_EQ(out.str(),
              "  Name      x\n"
              "  -----  ----\n"
              "  a      10.5\n"
              "  bcdef     1\n");
}

TEST(AlignedTable, CountsCharactersAndNotBytes) {
    std::ostringstream out;
    WriteAligned(out, {{"Größe", "1"}, {"abcde", "2"}}, 1, 0);
    EXPECT_EQ(out.str(), "Größe  1\nabcde  2\n");
}

TEST(AlignedTable, LeavesNoBlanksAtTheEnd) {
    std::ostringstream out;
    WriteAligned(out, {{"a", "long text"}, {"b", ""}, {"c"}}, 2, 0);
    EXPECT_EQ(out.str(), "a  long text\nb\nc\n");
}

}  // namespace

}  // namespace rekasim
