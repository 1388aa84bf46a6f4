// SPDX-License-Identifier: MIT
// Blocks of older versions and of versions to come: what is mended, and what the user is told.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "expression/parse/ParseExpression.h"
#include "persistence/StoredBlocks.h"
#include "support/Builders.h"
#include "support/FakeMessages.h"

namespace reka::test {
namespace {

const UserMessage rateWarning = {
    u"Old reaction package file format. Rate expressions have been corrected from kmol/h to mol/s by factor 1/3.6",
    u"REKA warning:", 48, MessageOwner::None};

TEST(OldDefinition, OfVersion0HasItsCountBehindTheFile) {
    const CFakeMessages messages;
    const ReadBlock read = Read(Head(0).U32(2).Add(Compound(u"A", u"H2O")).Add(Compound(u"B", u"CO")).U32(0));
    ASSERT_TRUE(read.isRead) << read.errorText;
    EXPECT_EQ(read.definition->compounds.size(), 2U);
    EXPECT_TRUE(messages.shown.empty());
}

TEST(OldDefinition, OfVersion0GetsItsRatesCorrected) {
    const CFakeMessages messages;
    const ReadBlock read = Read(Head(0).U32(0).U32(2).Add(Reaction(0, "2*T", "3*T")).Add(Reaction(0, "T")));
    ASSERT_TRUE(read.isRead) << read.errorText;
    const ReactionDefinition& reaction = *read.definition->reactions[0];
    EXPECT_EQ(reaction.rateEquation, u"(2*T)/3.6");
    ASSERT_NE(reaction.rateExpression, nullptr);
    EXPECT_EQ(reaction.rateExpression->dependencies, dependency::temperature);
    EXPECT_EQ(reaction.equilibriumConstantEquation, u"3*T");
    EXPECT_EQ(reaction.equilibriumConstantExpression, nullptr);
    EXPECT_EQ(reaction.equilibriumBasis, EquilibriumBasis::Molarity);
    const auto expected = Parse(*read.definition, u"(2*T)/3.6");
    std::vector<std::uint8_t> parsed;
    std::vector<std::uint8_t> stored;
    auto reference = MakePackage({});
    reference->reactions.push_back(std::make_unique<ReactionDefinition>(0));
    reference->reactions[0]->rateExpression = expected->Clone();
    parsed = Write(*reference);
    reference->reactions[0]->rateExpression = reaction.rateExpression->Clone();
    stored = Write(*reference);
    EXPECT_EQ(stored, parsed);
    EXPECT_EQ(messages.shown, std::vector<UserMessage>{rateWarning});
}

TEST(OldDefinition, OfVersion0HasItsTreeReplaced) {
    const CFakeMessages messages;
    CStoredBytes reaction;
    reaction.Wide(u"R").Wide(u"Vapor").Wide(u"").U32(1).U32(0).Narrow("2*T").Narrow("").Narrow("9");
    reaction.U8(1).U32(16).U32(28).U32(0);  // a tree of the pressure that isn't the text's
    reaction.U8(0).U8(1).U32(0).U32(0).F64(9);
    const ReadBlock read = Read(Head(0).U32(0).U32(1).Add(reaction));
    ASSERT_TRUE(read.isRead) << read.errorText;
    EXPECT_EQ(read.definition->reactions[0]->rateExpression->root->kind, NodeKind::Division);
    EXPECT_EQ(read.definition->reactions[0]->heatExpression->root->value, 9.0);
}

TEST(OldDefinition, OfVersion0KeepsRatesThatAreZeroOrEmpty) {
    const CFakeMessages messages;
    const ReadBlock read = Read(Head(0).U32(0).U32(2).Add(Reaction(0, "0")).Add(Reaction(0, "")));
    ASSERT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->reactions[0]->rateEquation, u"0");
    EXPECT_EQ(read.definition->reactions[1]->rateEquation, u"");
    EXPECT_EQ(read.definition->reactions[1]->rateExpression, nullptr);
    EXPECT_TRUE(messages.shown.empty());
}

TEST(OldDefinition, OfVersion0CorrectsWhatOnlyLooksLikeZero) {
    const CFakeMessages messages;
    const ReadBlock read = Read(Head(0).U32(0).U32(1).Add(Reaction(0, "0.0")));
    EXPECT_EQ(read.definition->reactions[0]->rateEquation, u"(0.0)/3.6");
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST(OldDefinition, OfVersion0TellsOfARateThatDoesNotParse) {
    const CFakeMessages messages;
    const ReadBlock read = Read(Head(0).U32(0).U32(1).Add(Reaction(0, "2*")));
    EXPECT_FALSE(read.isRead);
    std::u16string parserText;
    EXPECT_EQ(ParseExpression(*read.definition, u"(2*)/3.6", parserText, nullptr), nullptr);
    EXPECT_EQ(read.errorText, "Parse error for rate expression of old format file: " + Utf8FromUtf16(parserText));
    EXPECT_TRUE(messages.shown.empty());
}

TEST(OldDefinition, OfVersion0ReadsItsRatesAgainstItsCompounds) {
    const CFakeMessages messages;
    CStoredBytes reaction = Reaction(0, "C(B)");
    CStoredBytes withCoefficients;
    // the coefficients stand in front of the three flags
    withCoefficients.bytes.assign(reaction.bytes.begin(), reaction.bytes.end() - 3);
    withCoefficients.F64(-1).F64(1).U8(0).U8(0).U8(0);
    const ReadBlock read =
        Read(Head(0).U32(2).Add(Compound(u"A", u"")).Add(Compound(u"B", u"")).U32(1).Add(withCoefficients));
    ASSERT_TRUE(read.isRead) << read.errorText;
    const ExpressionNode& root = *read.definition->reactions[0]->rateExpression->root;
    ASSERT_EQ(root.argumentCount, 2);
    EXPECT_EQ(root.arguments[0]->kind, NodeKind::Molarity);
    EXPECT_EQ(root.arguments[0]->compoundIndex, 1);
}

TEST(OldDefinition, TellsOfCorrectedRatesBeforeItLooksAtTheEnd) {
    const CFakeMessages messages;
    const ReadBlock read = Read(Head(0).U32(0).U32(1).Add(Reaction(0, "T")).U32(1).U8(0));
    EXPECT_EQ(read.errorText, newer);
    EXPECT_EQ(messages.shown.size(), 1U);
}

TEST(OldDefinition, OfVersion1IsNotCorrected) {
    const CFakeMessages messages;
    const ReadBlock read = Read(Head(1).U32(0).U32(1).Add(Reaction(1, "2*T")).U32(1));
    ASSERT_TRUE(read.isRead) << read.errorText;
    EXPECT_EQ(read.definition->reactions[0]->rateEquation, u"2*T");
    EXPECT_EQ(read.definition->reactions[0]->rateExpression, nullptr);
    EXPECT_EQ(read.definition->reactions[0]->equilibriumBasis, EquilibriumBasis::Molarity);
    EXPECT_EQ(read.definition->thermoVersion, ThermoVersion::Version11);
    EXPECT_TRUE(messages.shown.empty());
}

TEST(OldDefinition, OfVersion2HasABasisAndNoObsoleteText) {
    const ReadBlock read = Read(Head(2).U32(0).U32(1).Add(Reaction(2, "2*T")).U32(0));
    ASSERT_TRUE(read.isRead) << read.errorText;
    EXPECT_EQ(read.definition->reactions[0]->equilibriumBasis, EquilibriumBasis::Fugacity);
}

TEST(OldDefinition, OfVersion0MayHaveAMarkerAllTheSame) {
    const CFakeMessages messages;
    CStoredBytes bytes = CStoredBytes().Wide(u"").Wide(u"").Narrow("").U32(versionMarker).U32(0);
    bytes.U32(1).Add(Compound(u"A", u"CH3(CH2)2OH")).U32(1).Wide(u"R").Wide(u"").Wide(u"left over").U32(1).U32(0);
    bytes.Narrow("2*T").Narrow("").Narrow("").F64(-1).U8(0).U8(0).U8(0).U32(1);
    const ReadBlock read = Read(bytes);
    ASSERT_TRUE(read.isRead) << read.errorText;
    EXPECT_EQ(read.definition->compounds[0]->formula.View(), u"C3H8O");
    EXPECT_EQ(read.definition->reactions[0]->rateEquation, u"(2*T)/3.6");
    EXPECT_EQ(read.definition->reactions[0]->stoichiometry, std::vector<double>{-1.0});
    EXPECT_EQ(read.definition->reactions[0]->equilibriumBasis, EquilibriumBasis::Molarity);
    EXPECT_EQ(read.definition->thermoVersion, ThermoVersion::Version11);
    EXPECT_EQ(messages.shown, std::vector<UserMessage>{rateWarning});
}

TEST(OldDefinition, OfVersionsUpTo2GetsItsFormulasInNormalForm) {
    for (const std::uint32_t version : {0U, 1U, 2U}) {
        const ReadBlock read = Read(Head(version)
                                        .U32(3)
                                        .Add(Compound(u"A", u"CH3(CH2)2OH"))
                                        .Add(Compound(u"B", u"CH3(CH2"))
                                        .Add(Compound(u"C", u""))
                                        .U32(0));
        ASSERT_TRUE(read.isRead) << read.errorText;
        EXPECT_EQ(read.definition->compounds[0]->formula.View(), u"C3H8O") << version;
        EXPECT_TRUE(read.definition->compounds[1]->formula.IsAbsent()) << version;
        EXPECT_TRUE(read.definition->compounds[2]->formula.IsAbsent()) << version;
    }
    const ReadBlock newest = Read(Head(3).U32(1).Add(Compound(u"A", u"CH3(CH2")).U32(0));
    EXPECT_EQ(newest.definition->compounds[0]->formula.View(), u"CH3(CH2");
}

TEST(NewDefinition, IsReadLikeTheNewestKnown) {
    const CFakeMessages messages;
    for (const std::uint32_t version : {4U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        CStoredBytes bytes = Head(version).U32(1).Add(Compound(u"A", u"CH3(CH2")).U32(2);
        for (int i = 0; i < 2; ++i) {
            bytes.Wide(u"R").Wide(u"Vapor").U32(1).U32(0).Narrow("2*T").Narrow("").Narrow("9").F64(-1);
            bytes.U8(1).U32(16).U32(28).U32(0).U8(0).U8(1).U32(0).U32(0).F64(9).U32(4);
        }
        const ReadBlock read = Read(bytes.U32(1));
        ASSERT_TRUE(read.isRead) << read.errorText;
        EXPECT_EQ(read.definition->compounds[0]->formula.View(), u"CH3(CH2");
        ASSERT_EQ(read.definition->reactions.size(), 2U);
        for (const auto& reaction : read.definition->reactions) {
            EXPECT_EQ(reaction->id.View(), u"R");
            EXPECT_EQ(reaction->rateEquation, u"2*T");
            EXPECT_EQ(reaction->stoichiometry, std::vector<double>{-1.0});
            EXPECT_EQ(reaction->rateExpression->root->kind, NodeKind::Pressure);  // as stored, not as the text says
            EXPECT_EQ(reaction->heatExpression->root->value, 9.0);
            EXPECT_EQ(reaction->equilibriumBasis, EquilibriumBasis::Fugacity);
        }
        EXPECT_EQ(read.definition->thermoVersion, ThermoVersion::Version11);
        EXPECT_EQ(Read(bytes.U8(0)).errorText, newer);
    }
    EXPECT_TRUE(messages.shown.empty());
}

/// Two compounds and two reactions with everything in them, and where the type of each reaction stands, behind which
/// comes the basis of its rate.
struct WholeBlock {
    CStoredBytes bytes;
    std::vector<std::size_t> typeOffsets;
};

WholeBlock MakeWhole(std::uint32_t version) {
    WholeBlock block;
    CStoredBytes& bytes = block.bytes;
    bytes.Wide(u"name").Wide(u"description").Narrow("file");
    if (version > 0) bytes.U32(versionMarker).U32(version);
    bytes.U32(2).Add(Compound(u"A", u"CH3(CH2)2OH")).Add(Compound(u"B", u"")).U32(2);
    for (int i = 0; i < 2; ++i) {
        bytes.Wide(u"R").Wide(u"Vapor");
        if (version < 2) bytes.Wide(u"left over");
        block.typeOffsets.push_back(bytes.bytes.size());
        bytes.U32(1).U32(0).Narrow("2*T").Narrow("A").Narrow("9").F64(-1).F64(1);
        bytes.U8(1).U32(8).U32(3).U32(2).U32(0).F64(2).U32(29).U32(0);  // 2*T reads the temperature
        bytes.U8(1).U32(2).U32(30).U32(0);
        bytes.U8(1).U32(0).U32(0).F64(9);
        if (version >= 2) bytes.U32(4);
    }
    bytes.U32(1);
    return block;
}

class BlocksOfAnyVersion : public testing::TestWithParam<std::uint32_t> {};

TEST_P(BlocksOfAnyVersion, AreReadWhole) {
    const CFakeMessages messages;
    const ReadBlock read = Read(MakeWhole(GetParam()).bytes);
    EXPECT_TRUE(read.isRead) << read.errorText;
    EXPECT_EQ(read.definition->thermoVersion, ThermoVersion::Version11);
    EXPECT_EQ(read.definition->reactions.size(), 2U);
    EXPECT_EQ(messages.shown.size(), GetParam() == 0 ? 1U : 0U);
}

TEST_P(BlocksOfAnyVersion, AreRefusedWhereverTheyAreCut) {
    const WholeBlock block = MakeWhole(GetParam());
    const auto& whole = block.bytes.bytes;
    const std::size_t endOfReactions = whole.size() - 4;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const CFakeMessages messages;
        const ReadBlock read = Read(std::vector<std::uint8_t>(whole.begin(), whole.begin() + static_cast<long>(size)));
        EXPECT_EQ(messages.shown.size(), GetParam() == 0 && size >= endOfReactions ? 1U : 0U) << size;
        if (size == endOfReactions) {
            EXPECT_TRUE(read.isRead);
            EXPECT_EQ(read.definition->thermoVersion, ThermoVersion::Version10);
            continue;
        }
        const bool isInWords = std::any_of(block.typeOffsets.begin(), block.typeOffsets.end(),
                                           [&](std::size_t offset) { return size >= offset && size < offset + 8; });
        EXPECT_FALSE(read.isRead) << size;
        EXPECT_EQ(read.errorText, isInWords ? "invalid data" : corrupted) << size;
    }
}
INSTANTIATE_TEST_SUITE_P(Versions, BlocksOfAnyVersion, testing::Values(0U, 1U, 2U, 3U, 4U));

}  // namespace
}  // namespace reka::test
