#include "package/SameText.h"

#include <gtest/gtest.h>

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
    if (GetParam().same) {
        EXPECT_EQ(SameTextHash(left.Get()), SameTextHash(right.Get()));
        EXPECT_EQ(SameTextHash(left.Get()), SameTextHash(right.View()));
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
