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

constexpr std::uint64_t seed = 0x0123'4567'89AB'CDEF;

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
        EXPECT_EQ(SameTextHash(TextOf(left.Get()), seed), SameTextHash(TextOf(right.Get()), seed));
        EXPECT_EQ(SameTextHash(TextOf(left.Get()), seed), SameTextHash(right.View(), seed));
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
        EXPECT_EQ(SameTextHash(TextOf(kept.Get()), seed), SameTextHash(right, seed));
        EXPECT_EQ(SameTextHash(left, seed), SameTextHash(right, seed));
    }
}

TEST(SameTextHash, EndsAStringAtItsFirstZero) {
    const CBstr text = CBstr::Make(std::u16string_view(u"Neon\0Argon", 10));
    EXPECT_EQ(SameTextHash(TextOf(text.Get()), seed), SameTextHash(std::u16string_view(u"nEON"), seed));
}

TEST(SameTextHash, DependsOnTheSeed) {
    EXPECT_NE(SameTextHash(u"Argon", 1), SameTextHash(u"Argon", 2));
}

/// Texts that differ in the bit alone that tells a small letter from its capital, in characters that are no letters.
TEST(SameTextHash, FoldsLettersAlone) {
    for (unsigned character = 0; character <= 0xFFFF; ++character) {
        const auto other = static_cast<char16_t>(character ^ 0x20);
        for (std::size_t place = 0; place < 5; ++place) {
            std::u16string left(5, u'x');
            std::u16string right = left;
            left[place] = static_cast<char16_t>(character);
            right[place] = other;
            ASSERT_EQ(SameTextHash(left, seed) == SameTextHash(right, seed), SameText(left, right)) << character;
        }
    }
}

// In its lower bits, by which tables go.
TEST(SameTextHash, DependsOnEachCharacterAndTheLength) {
    constexpr std::size_t mask = 0x7FFF;
    std::u16string text;
    for (int length = 1; length <= 12; ++length) {
        const std::size_t shorter = SameTextHash(text, seed) & mask;
        text += u'a';
        EXPECT_NE(SameTextHash(text, seed) & mask, shorter) << length;
        for (char16_t& character : text) {
            const std::size_t before = SameTextHash(text, seed) & mask;
            character = u'b';
            EXPECT_NE(SameTextHash(text, seed) & mask, before) << length;
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
