// SPDX-License-Identifier: MIT
// Names that count as the same, and the hash that has to agree.

#include "platform/SameText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace reka::test {
namespace {

struct SameTextCase {
    const char* name;
    const char16_t* left;  // null: absent
    const char16_t* right;
    bool same;
};

const SameTextCase sameTextCases[] = {
    {"BothAbsent", nullptr, nullptr, true},
    {"AbsentAndEmpty", nullptr, u"", true},
    {"EmptyAndAbsent", u"", nullptr, true},
    {"BothEmpty", u"", u"", true},
    {"AbsentAndText", nullptr, u"a", false},
    {"Equal", u"n-butane", u"n-butane", true},
    {"OtherCase", u"Water", u"wATER", true},
    {"FirstAndLastLetterFold", u"az", u"AZ", true},
    {"NeighboursOfLettersDoNotFold", u"@[", u"`{", false},
    {"LettersOutsideAsciiDoNotFold", u"\u00C4thanol", u"\u00E4thanol", false},
    {"Prefix", u"water", u"water2", false},
    {"TrailingBlank", u"water", u"water ", false},
};

class SameTextTable : public testing::TestWithParam<SameTextCase> {};

TEST_P(SameTextTable, ComparesNames) {
    const CBstr left = GetParam().left ? CBstr::Make(GetParam().left) : CBstr();
    const CBstr right = GetParam().right ? CBstr::Make(GetParam().right) : CBstr();
    EXPECT_EQ(SameText(left.Get(), right.Get()), GetParam().same);
    EXPECT_EQ(SameText(right.Get(), left.Get()), GetParam().same);
    EXPECT_EQ(SameText(left.Get(), right.View()), GetParam().same);
    EXPECT_EQ(SameText(right.Get(), left.View()), GetParam().same);
    EXPECT_EQ(SameText(left.View(), right.View()), GetParam().same);
    EXPECT_EQ(SameUsualText(left.Get(), right.Get()), GetParam().same);
    EXPECT_EQ(SameUsualText(right.Get(), left.Get()), GetParam().same);
    EXPECT_EQ(SameUsualText(left.Get(), right.View()), GetParam().same);
    EXPECT_EQ(SameUsualText(right.Get(), left.View()), GetParam().same);
    if (GetParam().same) {
        EXPECT_EQ(SameTextHash(left.Get()), SameTextHash(right.Get()));
        EXPECT_EQ(SameTextHash(left.Get()), SameTextHash(right.View()));
    }
}

TEST(SameTextHash, IsTheSameForTextsThatAreTheSame) {
    std::mt19937 random(29);
    for (int round = 0; round < 2000; ++round) {
        std::u16string left;
        std::u16string right;
        for (std::size_t length = random() % 20; length > 0; --length) {
            const auto letter = static_cast<char16_t>(u'a' + random() % 26);
            const auto capital = static_cast<char16_t>(letter - u'a' + u'A');
            const char16_t other = u"@[`{-\u00C4\u00E4\u0410\uFFFF"[random() % 9];
            const bool isLetter = random() % 4 != 0;
            left += isLetter ? (random() % 2 ? letter : capital) : other;
            right += isLetter ? (random() % 2 ? letter : capital) : other;
        }
        const CBstr kept = CBstr::Make(left);
        ASSERT_TRUE(SameText(kept.Get(), right));
        EXPECT_EQ(SameTextHash(kept.Get()), SameTextHash(right));
        EXPECT_EQ(SameTextHash(left), SameTextHash(right));
    }
}

TEST(SameTextHash, EndsAStringAtItsFirstZero) {
    const CBstr text = CBstr::Make(std::u16string_view(u"Neon\0Argon", 10));
    EXPECT_EQ(SameTextHash(text.Get()), SameTextHash(std::u16string_view(u"nEON")));
}

// In its lower bits, by which tables go.
TEST(SameTextHash, DependsOnEachCharacterAndTheLength) {
    constexpr std::size_t mask = 0x7FFF;
    std::u16string text;
    for (int length = 1; length <= 12; ++length) {
        const std::size_t shorter = SameTextHash(text) & mask;
        text += u'a';
        EXPECT_NE(SameTextHash(text) & mask, shorter) << length;
        for (char16_t& character : text) {
            const std::size_t before = SameTextHash(text) & mask;
            character = u'b';
            EXPECT_NE(SameTextHash(text) & mask, before) << length;
            character = u'a';
        }
    }
}

TEST(SameText, TakesACharacterForWhatItIs) {
    EXPECT_FALSE(SameText(u"a", std::u16string_view(u"a\0", 2)));  // a zero ends one of them alone
    EXPECT_FALSE(SameText(u"a", std::u16string_view(u"\0", 1)));
    EXPECT_TRUE(SameText(u"ab", std::u16string_view(u"ABc", 2)));
}

INSTANTIATE_TEST_SUITE_P(Table, SameTextTable, testing::ValuesIn(sameTextCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
