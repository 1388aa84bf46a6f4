// SPDX-License-Identifier: MIT
// Reactions by their ids, in few and in many, and never those of another definition.

#include "package/ReactionIndex.h"

#include <gtest/gtest.h>

#include <string>

#include "support/Builders.h"

namespace reka::test {
namespace {

std::u16string Name(const char16_t* word, std::size_t number) {
    std::u16string name = word;
    for (const char digit : std::to_string(number)) name.push_back(static_cast<char16_t>(digit));
    return name;
}

/// A definition of `count` reactions with the ids R0, R1 and so on.
std::unique_ptr<ReactionPackDefinition> MakeReactions(std::size_t count) {
    std::unique_ptr<ReactionPackDefinition> definition = MakePackage({});
    for (std::size_t i = 0; i < count; ++i) AddKinetic(*definition, Name(u"R", i).c_str(), u"");
    return definition;
}

std::size_t FindIn(CReactionIndex& index, const ReactionPackDefinition& definition, std::u16string_view id) {
    return index.Find(definition, CBstr::Make(id).Get());
}

TEST(ReactionIndex, FindsEachReactionOfAnyNumber) {
    for (const std::size_t count : {1U, 2U, 8U, 9U, 16U, 17U, 1000U}) {
        const auto definition = MakeReactions(count);
        CReactionIndex index;
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(FindIn(index, *definition, Name(u"R", i)), i);
            EXPECT_EQ(FindIn(index, *definition, Name(u"r", i)), i);  // A to Z folded
        }
        EXPECT_EQ(FindIn(index, *definition, Name(u"R", count)), CReactionIndex::none);
        EXPECT_EQ(FindIn(index, *definition, u"\u00e4"), CReactionIndex::none);
    }
}

TEST(ReactionIndex, FindsNothingInADefinitionWithoutReactions) {
    CReactionIndex index;
    EXPECT_EQ(FindIn(index, *MakeReactions(0), u"R0"), CReactionIndex::none);
}

TEST(ReactionIndex, TakesTheFirstOfEqualIds) {
    const auto definition = MakeReactions(40);
    definition->reactions[7]->id = CBstr::Make(u"r30");
    definition->reactions[20]->id = CBstr::Make(u"R5");
    CReactionIndex index;
    EXPECT_EQ(FindIn(index, *definition, u"R30"), 7U);
    EXPECT_EQ(FindIn(index, *definition, u"R5"), 5U);
    EXPECT_EQ(FindIn(index, *definition, u"R20"), CReactionIndex::none);
}

TEST(ReactionIndex, TakesAnAbsentIdForAnEmptyOne) {
    const auto definition = MakeReactions(20);
    definition->reactions[3]->id.Reset();
    definition->reactions[4]->id = CBstr::Make(u"");
    CReactionIndex index;
    EXPECT_EQ(FindIn(index, *definition, u""), 3U);
    EXPECT_EQ(index.Find(*definition, nullptr), 3U);
    definition->reactions[3]->id = CBstr::Make(u"");
    CReactionIndex other;
    EXPECT_EQ(other.Find(*definition, nullptr), 3U);
}

TEST(ReactionIndex, KnowsAnotherDefinitionFromTheOneBefore) {
    CReactionIndex index;
    for (int round = 0; round < 20; ++round) {  // memory is used again
        const auto definition = MakeReactions(30);
        std::swap(definition->reactions[static_cast<std::size_t>(round)], definition->reactions[29]);
        EXPECT_EQ(FindIn(index, *definition, u"R29"), static_cast<std::size_t>(round));
    }
}

}  // namespace
}  // namespace reka::test
