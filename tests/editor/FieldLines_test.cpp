// SPDX-License-Identifier: MIT
// Positions in a field that counts a line end once, and in the text that has two characters for it.

#include "editor/FieldLines.h"

#include <gtest/gtest.h>

namespace reka::test {
namespace {

TEST(FieldLines, HaveTwoCharactersInTheText) {
    EXPECT_EQ(CFieldLines(u"").Text(), u"");
    EXPECT_EQ(CFieldLines(u"2*T").Text(), u"2*T");
    EXPECT_EQ(CFieldLines(u"1+\r(T)\r").Text(), u"1+\r\n(T)\r\n");
    EXPECT_EQ(CFieldLines(u"\r\r").Text(), u"\r\n\r\n");
}

TEST(FieldLines, MovePositionsBehindThem) {
    const CFieldLines lines(u"1+\r(T)\r");  // "1+\r\n(T)\r\n"
    const std::int32_t inText[] = {0, 1, 2, 4, 5, 6, 7, 9};
    for (std::int32_t position = 0; position < 8; ++position) {
        EXPECT_EQ(lines.InText(position), inText[position]) << position;
        EXPECT_EQ(lines.InField(inText[position]), position) << position;
    }
}

TEST(FieldLines, HaveNoPlaceInside) {
    const CFieldLines lines(u"1+\r\rT");  // "1+\r\n\r\nT"
    EXPECT_EQ(lines.InField(3), 3);       // between the first two characters of a line end: behind it
    EXPECT_EQ(lines.InField(4), 3);
    EXPECT_EQ(lines.InField(5), 4);
    EXPECT_EQ(lines.InField(6), 4);
}

TEST(FieldLines, MoveBothEndsOfARange) {
    const CFieldLines lines(u"1\rT\rP");
    EXPECT_EQ(lines.InText(TextRange{1, 4}), (TextRange{1, 6}));
    EXPECT_EQ(lines.InField(TextRange{1, 6}), (TextRange{1, 4}));
}

TEST(FieldLines, LeaveOtherTextsAlone) {
    const CFieldLines lines(u"T\n\xD83D\xDE00");
    EXPECT_EQ(lines.Text(), u"T\n\xD83D\xDE00");
    for (std::int32_t position = 0; position <= 4; ++position) {
        EXPECT_EQ(lines.InText(position), position);
        EXPECT_EQ(lines.InField(position), position);
    }
    EXPECT_EQ(CFieldLines().InText(5), 5);
}

TEST(FieldLines, AreFoundQuicklyInALongText) {
    std::u16string field;
    for (int i = 0; i < 100000; ++i) field += u"T\r";
    const CFieldLines lines(field);
    for (std::int32_t i = 0; i < 100000; ++i) {
        ASSERT_EQ(lines.InText(2 * i), 3 * i);
        ASSERT_EQ(lines.InField(3 * i), 2 * i);
    }
}

}  // namespace
}  // namespace reka::test
