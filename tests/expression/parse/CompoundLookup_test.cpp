// SPDX-License-Identifier: MIT
// One lookup for all texts of a definition.

#include "expression/parse/CompoundLookup.h"

#include <gtest/gtest.h>

#include <random>

#include "expression/ExpressionBuilders.h"
#include "expression/parse/ParseExpression.h"
#include "platform/SameText.h"

namespace reka::test {
namespace {

// Often enough that names are looked at one by one first, and looked up in a table then.
constexpr int rounds = 20;

struct LookupCase {
    const char* name;
    std::u16string_view word;
    std::int32_t index;
};

class Lookups : public testing::TestWithParam<LookupCase> {};

TEST_P(Lookups, FindTheSameEachTime) {
    const auto definition = MakeDefinitionOf(
        {u"Water", u"n-Butane", u"WATER", u"@a[", u"`a{", u"\u00C4thanol", u"\u00E4thanol", nullptr, u"", u"CO2"});
    definition->compounds.push_back(std::make_unique<CompoundDefinition>());
    definition->compounds.back()->name = CBstr::Make(std::u16string_view(u"Neon\0Argon", 10));
    CCompoundLookup compounds(*definition);
    for (int i = 0; i < rounds; ++i) EXPECT_EQ(compounds.Find(GetParam().word), GetParam().index) << i;
}

const LookupCase lookupCases[] = {
    {"AsSpelled", u"n-Butane", 1},
    {"InAnotherCase", u"N-BUTANE", 1},
    {"FirstOfTheSameName", u"water", 0},
    {"CharacterBelowTheCapitals", u"@A[", 3},
    {"CharacterBelowTheSmallLetters", u"`A{", 4},
    {"MixedBorders", u"@a{", -1},
    {"CapitalBeyondAscii", u"\u00C4THANOL", 5},
    {"SmallLetterBeyondAscii", u"\u00E4THANOL", 6},
    {"Empty", u"", 7},
    {"UpToTheFirstZero", u"neon", 10},
    {"WithWhatIsBehindTheZero", std::u16string_view(u"Neon\0Argon", 10), -1},
    {"Beginning", u"Wate", -1},
    {"Longer", u"Water1", -1},
};
INSTANTIATE_TEST_SUITE_P(Table, Lookups, testing::ValuesIn(lookupCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CompoundLookup, FindsWhatAWalkFinds) {
    std::mt19937 random(5);
    const auto makeName = [&] {
        std::u16string name;
        for (std::size_t length = random() % 6; length > 0; --length) name += u"aA@`zZ[{\u00E4"[random() % 9];
        return name;
    };
    for (int round = 0; round < 200; ++round) {
        ReactionPackDefinition definition(nullptr);
        for (std::size_t count = random() % 40; count > 0; --count) {
            definition.compounds.push_back(std::make_unique<CompoundDefinition>());
            definition.compounds.back()->name = CBstr::Make(makeName());
        }
        CCompoundLookup compounds(definition);
        for (int i = 0; i < rounds; ++i) {
            const std::u16string word = makeName();
            std::int32_t first = -1;
            for (std::size_t at = definition.compounds.size(); at-- > 0;) {
                if (SameText(definition.compounds[at]->name.View(), word)) first = static_cast<std::int32_t>(at);
            }
            EXPECT_EQ(compounds.Find(word), first);
        }
    }
}

TEST(CompoundLookup, ServesTheParsesOfManyTexts) {
    const auto definition = MakeDefinitionOf({u"Ar", u"n-butane", u"ar", u"O2", u"N2", u"", u"H2"});
    CCompoundLookup compounds(*definition);
    EXPECT_EQ(&compounds.Compounds(), definition.get());
    const std::u16string_view texts[] = {
        u"X(Ar)+X(\"N-BUTANE\")*C(h2)", u"X(He)", u"X(AR)*F(n2)-A(\"\")", u"2+", u"", u"(1 2)+X(O2", u"SQRT(C(o2),1)",
    };
    for (int i = 0; i < rounds; ++i) {
        for (const std::u16string_view text : texts) {
            std::u16string errorText;
            std::u16string errorTextAlone;
            std::int32_t position = -1;
            std::int32_t positionAlone = -1;
            const ExpressionTree tree = ParseExpression(compounds, text, errorText, &position);
            const ExpressionTree treeAlone = ParseExpression(*definition, text, errorTextAlone, &positionAlone);
            EXPECT_EQ(Show(tree.get()), Show(treeAlone.get()));
            EXPECT_EQ(errorText, errorTextAlone);
            EXPECT_EQ(position, positionAlone);
        }
    }
    std::u16string errorText;
    EXPECT_EQ(Show(ParseExpression(compounds, u"X(ar)+X(H2)", errorText, nullptr).get()), "1(31:0,31:6)");
}

}  // namespace
}  // namespace reka::test
