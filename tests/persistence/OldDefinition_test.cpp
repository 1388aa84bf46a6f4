// Blocks of older versions: what is mended, and what the user is told.

#include <gtest/gtest.h>

#include <string>

#include "expression/ParseExpression.h"
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

}  // namespace
}  // namespace reka::test
