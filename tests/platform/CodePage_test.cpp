// SPDX-License-Identifier: MIT
// The 8-bit text of stored data and back, the same on each platform.

#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace reka::test {
namespace {

TEST(CodePage, KeepsAscii) {
    std::u16string wide;
    std::string narrow;
    for (char character = 1; character > 0; ++character) {
        wide += static_cast<char16_t>(character);
        narrow += character;
        if (character == 127) break;
    }
    EXPECT_EQ(NarrowText(wide), narrow);
    EXPECT_EQ(WideText(narrow), wide);
    EXPECT_EQ(NarrowText(u""), "");
    EXPECT_EQ(WideText(""), u"");
}

TEST(CodePage, IsWesternWhereTheSystemIs) {
    EXPECT_EQ(NarrowText(u"\u20AC \u00E4\u00FF"), "\x80 \xE4\xFF");
    EXPECT_EQ(WideText("\x80 \xE4\xFF"), u"\u20AC \u00E4\u00FF");
}

TEST(CodePage, GivesEveryByteBack) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
    EXPECT_EQ(WideText(bytes).size(), 255U);
    EXPECT_EQ(NarrowText(WideText(bytes)), bytes);
}

TEST(CodePage, ReplacesWhatItHasNot) {
    EXPECT_EQ(NarrowText(u"\u4E2D"), "?");
    EXPECT_EQ(NarrowText(u"a\u4E2D\u0416b"), "a??b");
}

TEST(CodePage, KeepsZeros) {
    EXPECT_EQ(NarrowText(std::u16string_view(u"a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(WideText(std::string_view("a\0b", 3)), std::u16string(u"a\0b", 3));
}

}  // namespace
}  // namespace reka::test
