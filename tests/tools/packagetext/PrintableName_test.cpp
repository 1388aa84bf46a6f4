// SPDX-License-Identifier: MIT
// What of a name is shown as it is, and what isn't.

#include "packagetext/PrintableName.h"

#include <gtest/gtest.h>

namespace packagetext {

namespace {

TEST(PrintableName, ShowsLettersOfAllKinds) {
    EXPECT_EQ(PrintableName(u"Ethanol ~\u00A0\u0394\u6C34\U0001F9EA"), "Ethanol ~\u00A0\u0394\u6C34\U0001F9EA");
    EXPECT_EQ(PrintableName("\u0394-1"), "\u0394-1");
    EXPECT_EQ(PrintableName(u""), "");
}

TEST(PrintableName, SteersNoTerminal) {
    EXPECT_EQ(PrintableName(u"\u001B[31mred\r\n\t\u007F\u0080\u009B31m\u009F"), "?[31mred??????31m?");
    EXPECT_EQ(PrintableName("\u009B2J"), "?2J");
}

}  // namespace

}  // namespace packagetext
