#include "persistence/StoredDefinition.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "expression/ParseExpression.h"
#include "platform/Utf8.h"
#include "support/Builders.h"
#include "support/FakeMessages.h"
#include "support/StoredBytes.h"

namespace reka::test {
namespace {

constexpr std::uint32_t marker = 0xFFFFFFFF;

const char* const corrupted = "data corrupted";
const char* const newer =
    "unexpected data at the end of the stored reaction package data: reaction pack data may have been saved with newer "
    "version";

struct ReadBlock {
    bool isRead = false;
    std::unique_ptr<ReactionPackDefinition> definition = std::make_unique<ReactionPackDefinition>(nullptr);
    std::string errorText;
};

ReadBlock Read(const std::vector<std::uint8_t>& bytes) {
    ReadBlock block;
    std::u16string errorText;
    block.isRead = ReadStoredDefinition(*block.definition, bytes, errorText);
    block.errorText = Utf8FromUtf16(errorText);
    return block;
}
ReadBlock Read(const CStoredBytes& block) {
    return Read(block.bytes);
}

std::vector<std::uint8_t> Write(const ReactionPackDefinition& definition) {
    std::vector<std::uint8_t> block;
    std::u16string errorText;
    EXPECT_TRUE(WriteStoredDefinition(definition, block, errorText)) << Utf8FromUtf16(errorText);
    return block;
}

/// A block up to the number of compounds: name, description and compound file empty.
CStoredBytes Head(std::uint32_t version) {
    CStoredBytes bytes;
    bytes.Wide(u"").Wide(u"").Narrow("");
    if (version > 0) bytes.U32(marker).U32(version);
    return bytes;
}

CStoredBytes Compound(std::u16string_view id, std::u16string_view formula) {
    return CStoredBytes().Wide(id).Wide(u"").Wide(id).Wide(formula).F64(18.015).F64(0);
}

/// A reaction without coefficients and trees, as `version` has it.
CStoredBytes Reaction(std::uint32_t version, std::string_view rate, std::string_view constant = "") {
    CStoredBytes bytes;
    bytes.Wide(u"R").Wide(u"Vapor");
    if (version < 2) bytes.Wide(u"left over");
    bytes.U32(1).U32(0).Narrow(rate).Narrow(constant).Narrow("");
    bytes.U8(0).U8(0).U8(0);
    if (version >= 2) bytes.U32(4);
    return bytes;
}

TEST(StoredDefinition, OfAnEmptyPackageIsTheseBytes) {
    ReactionPackDefinition definition(nullptr);
    definition.name = CBstr::Make(u"A");
    definition.pcdFile.clear();
    const std::vector<std::uint8_t> expected = {0x01, 0,    0,    0, 0x41, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF,
                                                0xFF, 0xFF, 0x03, 0, 0,    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,    0};
    EXPECT_EQ(expected.size(), 36U);
    EXPECT_EQ(Write(definition), expected);
    const ReadBlock read = Read(expected);
    EXPECT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->name.View(), u"A");
    EXPECT_TRUE(read.definition->description.IsAbsent());
    EXPECT_EQ(read.definition->pcdFile, u"");
    EXPECT_EQ(read.definition->thermoVersion, ThermoVersion::Version10);
}

/// Every field of it differs from its default.
std::unique_ptr<ReactionPackDefinition> MakeSample() {
    auto definition = MakePackage({u"Ethanol", u"Argon"});
    definition->description = CBstr::Make(u"A sample \u2192");
    definition->pcdFile = u"C:\\data\\x.pcd";
    definition->thermoVersion = ThermoVersion::Version11;
    definition->compounds[0]->id = CBstr::Make(u"C2H5OH");
    definition->compounds[0]->casNumber = CBstr::Make(u"64-17-5");
    definition->compounds[0]->formula = CBstr::Make(u"C2H6O");
    definition->compounds[0]->molecularWeight = 46.069;
    definition->compounds[1]->charge = -1.0;
    ReactionDefinition& kinetic = AddKinetic(*definition, u"K", u"2*T");
    kinetic.stoichiometry = {-1.0, 0.5};
    kinetic.rateBasis = RateBasis::Heterogeneous;
    SetHeat(*definition, kinetic, u"-1e3");
    ReactionDefinition& equilibrium = AddEquilibrium(*definition, u"E", u"EXP(X(Argon))");
    equilibrium.equilibriumBasis = EquilibriumBasis::Fugacity;
    return definition;
}

/// The sample's block, written by hand.
CStoredBytes SampleBytes() {
    CStoredBytes bytes;
    bytes.Wide(u"Test package").Wide(u"A sample \u2192").Narrow("C:\\data\\x.pcd").U32(marker).U32(3);
    bytes.U32(2);
    bytes.Wide(u"C2H5OH").Wide(u"64-17-5").Wide(u"Ethanol").Wide(u"C2H6O").F64(46.069).F64(0);
    bytes.Wide(u"Argon").Wide(u"").Wide(u"Argon").Wide(u"").F64(0).F64(-1);
    bytes.U32(2);
    bytes.Wide(u"K").Wide(u"Liquid").U32(1).U32(1).Narrow("2*T").Narrow("").Narrow("-1e3").F64(-1).F64(0.5);
    bytes.U8(1).U32(8).U32(3).U32(2).U32(0).F64(2).U32(29).U32(0);  // 2*T reads the temperature
    bytes.U8(0);
    bytes.U8(1).U32(0).U32(0).F64(-1000);
    bytes.U32(0);
    bytes.Wide(u"E").Wide(u"Liquid").U32(0).U32(0).Narrow("").Narrow("EXP(X(Argon))").Narrow("").F64(0).F64(0);
    bytes.U8(0);
    bytes.U8(1).U32(1).U32(21).U32(1).U32(31).U32(1);
    bytes.U8(0);
    bytes.U32(4);
    bytes.U32(1);
    return bytes;
}

TEST(StoredDefinition, WritesEveryFieldInItsPlace) {
    EXPECT_EQ(Write(*MakeSample()), SampleBytes().bytes);
}

TEST(StoredDefinition, TakesOneAllocationOfTheExactSize) {
    const auto block = Write(*MakeSample());
    EXPECT_EQ(block.capacity(), block.size());
}

TEST(StoredDefinition, ReadsEveryField) {
    const ReadBlock read = Read(SampleBytes());
    ASSERT_TRUE(read.isRead) << read.errorText;
    const ReactionPackDefinition& definition = *read.definition;
    EXPECT_EQ(definition.name.View(), u"Test package");
    EXPECT_EQ(definition.description.View(), u"A sample \u2192");
    EXPECT_EQ(definition.pcdFile, u"C:\\data\\x.pcd");
    EXPECT_EQ(definition.thermoVersion, ThermoVersion::Version11);
    ASSERT_EQ(definition.compounds.size(), 2U);
    EXPECT_EQ(definition.compounds[0]->id.View(), u"C2H5OH");
    EXPECT_EQ(definition.compounds[0]->name.View(), u"Ethanol");
    EXPECT_EQ(definition.compounds[0]->casNumber.View(), u"64-17-5");
    EXPECT_EQ(definition.compounds[0]->formula.View(), u"C2H6O");
    EXPECT_EQ(definition.compounds[0]->molecularWeight, 46.069);
    EXPECT_EQ(definition.compounds[0]->databaseIndex, -1);
    EXPECT_TRUE(definition.compounds[1]->formula.IsAbsent());
    EXPECT_TRUE(definition.compounds[1]->casNumber.IsAbsent());
    EXPECT_EQ(definition.compounds[1]->charge, -1.0);
    ASSERT_EQ(definition.reactions.size(), 2U);
    const ReactionDefinition& kinetic = *definition.reactions[0];
    EXPECT_EQ(kinetic.id.View(), u"K");
    EXPECT_EQ(kinetic.phase.View(), u"Liquid");
    EXPECT_EQ(kinetic.type, ReactionType::Kinetic);
    EXPECT_EQ(kinetic.rateBasis, RateBasis::Heterogeneous);
    EXPECT_EQ(kinetic.rateEquation, u"2*T");
    EXPECT_EQ(kinetic.heatEquation, u"-1e3");
    EXPECT_EQ(kinetic.stoichiometry, (std::vector<double>{-1.0, 0.5}));
    ASSERT_NE(kinetic.rateExpression, nullptr);
    EXPECT_EQ(kinetic.rateExpression->dependencies, dependency::temperature);
    EXPECT_EQ(kinetic.equilibriumConstantExpression, nullptr);
    const ReactionDefinition& equilibrium = *definition.reactions[1];
    EXPECT_EQ(equilibrium.type, ReactionType::Equilibrium);
    EXPECT_EQ(equilibrium.equilibriumBasis, EquilibriumBasis::Fugacity);
    EXPECT_EQ(equilibrium.equilibriumConstantEquation, u"EXP(X(Argon))");
    ASSERT_NE(equilibrium.equilibriumConstantExpression, nullptr);
    EXPECT_EQ(Write(definition), SampleBytes().bytes);
}

TEST(StoredDefinition, NotesEveryTruncation) {
    const CFakeMessages messages;
    const auto whole = SampleBytes().bytes;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const ReadBlock read = Read(std::vector<std::uint8_t>(whole.begin(), whole.begin() + static_cast<long>(size)));
        if (size == whole.size() - 4) {
            EXPECT_TRUE(read.isRead);
            EXPECT_EQ(read.definition->thermoVersion, ThermoVersion::Version10);
            continue;
        }
        EXPECT_FALSE(read.isRead) << size;
        EXPECT_TRUE(read.errorText == corrupted || read.errorText == "invalid data") << size << read.errorText;
    }
}

TEST(StoredDefinition, NeedsNoAlignment) {
    const auto whole = SampleBytes().bytes;
    for (std::size_t offset = 1; offset < 8; ++offset) {
        std::vector<std::uint8_t> shifted(offset);
        shifted.insert(shifted.end(), whole.begin(), whole.end());
        ReactionPackDefinition definition(nullptr);
        std::u16string errorText;
        EXPECT_TRUE(ReadStoredDefinition(definition, std::span(shifted).subspan(offset), errorText));
        EXPECT_EQ(Write(definition), whole);
    }
}

class BlockEnds : public testing::TestWithParam<std::uint32_t> {};

TEST_P(BlockEnds, HoldTheThermoVersionOrNothing) {
    const auto read = [](const std::vector<std::uint8_t>& end) {
        CStoredBytes bytes = Head(GetParam()).U32(0).U32(0);
        bytes.bytes.insert(bytes.bytes.end(), end.begin(), end.end());
        return Read(bytes);
    };
    ReadBlock block = read({});
    EXPECT_TRUE(block.isRead);
    EXPECT_EQ(block.definition->thermoVersion, ThermoVersion::Version10);
    block = read({1, 0, 0, 0});
    EXPECT_TRUE(block.isRead);
    EXPECT_EQ(block.definition->thermoVersion, ThermoVersion::Version11);
    EXPECT_EQ(read({1, 0, 0, 0, 0}).errorText, newer);
    EXPECT_EQ(read({1, 0, 0, 0, 1, 0, 0, 0}).errorText, newer);
    for (const std::vector<std::uint8_t>& end : {std::vector<std::uint8_t>{1}, {1, 0}, {1, 0, 0}}) {
        EXPECT_EQ(read(end).errorText, corrupted) << end.size();
    }
}
INSTANTIATE_TEST_SUITE_P(Versions, BlockEnds, testing::Values(0U, 1U, 2U, 3U, 4U, 0x80000000U));

TEST(StoredDefinition, ReadsAVersionToComeAsTheNewestOne) {
    EXPECT_TRUE(Read(Head(4).U32(0).U32(0).U32(0)).isRead);
    EXPECT_EQ(Read(Head(4).U32(0).U32(0).U32(0).U32(0)).errorText, newer);
}

TEST(StoredDefinition, TakesCountsBelowZeroForNone) {
    EXPECT_TRUE(Read(Head(3).U32(0xFFFFFFFF).U32(0x80000000).U32(1)).isRead);
    EXPECT_TRUE(Read(Head(0).U32(0x80000000).U32(0xFFFFFFFF)).isRead);
}

TEST(StoredDefinition, TakesValuesAsStored) {
    const ReadBlock read = Read(Head(3)
                                    .U32(0)
                                    .U32(1)
                                    .Wide(u"R")
                                    .Wide(u"")
                                    .U32(7)
                                    .U32(0xFFFFFFFE)
                                    .Narrow("")
                                    .Narrow("")
                                    .Narrow("")
                                    .U8(0)
                                    .U8(0)
                                    .U8(0)
                                    .U32(99)
                                    .U32(5));
    ASSERT_TRUE(read.isRead) << read.errorText;
    EXPECT_EQ(static_cast<std::int32_t>(read.definition->reactions[0]->type), 7);
    EXPECT_EQ(static_cast<std::int32_t>(read.definition->reactions[0]->rateBasis), -2);
    EXPECT_EQ(static_cast<std::int32_t>(read.definition->reactions[0]->equilibriumBasis), 99);
    EXPECT_EQ(static_cast<std::int32_t>(read.definition->thermoVersion), 5);
}

TEST(StoredDefinition, OfAnUnknownBasisIsWrittenAsItStands) {
    auto definition = MakeSample();
    definition->reactions[0]->equilibriumBasis = static_cast<EquilibriumBasis>(-5);
    EXPECT_EQ(Write(*Read(Write(*definition)).definition), Write(*definition));
}

TEST(StoredDefinition, LeavesNoDefaultInThePlaceOfAnEmptyCompoundFile) {
    EXPECT_EQ(Read(Head(3).U32(0).U32(0)).definition->pcdFile, u"");
}

TEST(StoredDefinition, MakesEmptyTextsAbsent) {
    auto definition = MakePackage({});
    definition->name = CBstr::Make(u"");
    definition->description = CBstr::Make(u"x");
    const ReadBlock read = Read(Write(*definition));
    EXPECT_TRUE(read.definition->name.IsAbsent());
    EXPECT_EQ(read.definition->description.View(), u"x");
}

TEST(StoredDefinition, WritesTextsUpToTheirFirstZero) {
    auto definition = MakePackage({});
    definition->name = CBstr::Make(std::u16string_view(u"ab\0cd", 5));
    definition->pcdFile = std::u16string(u"x\0y", 3);
    const ReadBlock read = Read(Write(*definition));
    ASSERT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->name.View(), u"ab");
    EXPECT_EQ(read.definition->pcdFile, u"x");
}

struct LengthCase {
    const char* name;
    std::uint32_t length;
    std::size_t bytesBehind;
    bool isWide;
    const char* errorText;
};

/// The length of the package's name, or of the compound file, with too few bytes or just enough behind it. What is
/// behind a text that reads is one word short of a block.
const LengthCase lengthCases[] = {
    {"WideWithoutTerminator", 2, 4, true, corrupted},
    {"WideWithHalfATerminator", 2, 5, true, corrupted},
    {"WideThatWraps32Bits", 0x7FFFFFFF, 16, true, corrupted},
    {"WideThatWrapsToZero", 0xFFFFFFFF, 16, true, corrupted},
    {"WideThatWrapsToTwo", 0x80000000, 16, true, corrupted},
    {"NarrowWithoutTerminator", 3, 3, false, corrupted},
    {"NarrowThatWrapsToZero", 0xFFFFFFFF, 16, false, corrupted},
    {"NarrowBeyond31Bits", 0x7FFFFFFF, 16, false, corrupted},
};
void PrintTo(const LengthCase& row, std::ostream* stream) {
    *stream << row.name;
}

class TextLengths : public testing::TestWithParam<LengthCase> {};

TEST_P(TextLengths, AreComparedWithWhatIsLeft) {
    const LengthCase& row = GetParam();
    CStoredBytes bytes;
    if (!row.isWide) bytes.Wide(u"").Wide(u"");
    bytes.U32(row.length);
    bytes.bytes.resize(bytes.bytes.size() + row.bytesBehind, 'x');
    EXPECT_EQ(Read(bytes).errorText, row.errorText);
}
INSTANTIATE_TEST_SUITE_P(Table, TextLengths, testing::ValuesIn(lengthCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(StoredDefinition, EndsAWideTextWhereItsCountSays) {
    CStoredBytes bytes;
    bytes.U32(2).U8('a').U8(0).U8('b').U8(0).U8('c').U8(0);  // something else in the place of the terminator
    bytes.Wide(u"").Narrow("").U32(marker).U32(3).U32(0).U32(0);
    const ReadBlock read = Read(bytes);
    ASSERT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->name.View(), u"ab");
    EXPECT_EQ(SysStringLen(read.definition->name.Get()), 2U);
}

TEST(StoredDefinition, ReadsANarrowTextWithoutItsZero) {
    CStoredBytes bytes;
    bytes.Wide(u"").Wide(u"").U32(2).U8('a').U8('b').U8('c').U32(marker).U32(3).U32(0).U32(0);
    const ReadBlock read = Read(bytes);
    ASSERT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->pcdFile, u"abc");
}

TEST(StoredDefinition, EndsANarrowTextAtItsFirstZero) {
    CStoredBytes bytes;
    bytes.Wide(u"").Wide(u"").U32(4).U8('a').U8(0).U8('b').U8('c').U8(0).U32(marker).U32(3).U32(0).U32(0);
    const ReadBlock read = Read(bytes);
    ASSERT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->pcdFile, u"a");
}

TEST(StoredDefinition, KeepsWhatTheCodePageHasAndReplacesTheRest) {
    auto definition = MakePackage({});
    definition->pcdFile = u"caf\u00E9 \u4E2D";
    EXPECT_EQ(Read(Write(*definition)).definition->pcdFile, u"caf\u00E9 ?");
}

TEST(StoredDefinition, NamesWhichCheckAReactionFails) {
    const CStoredBytes start = Head(3).U32(0).U32(1).Wide(u"R").Wide(u"");
    EXPECT_EQ(Read(CStoredBytes(start)).errorText, "invalid data");
    EXPECT_EQ(Read(CStoredBytes(start).U32(1).U8(0).U8(0).U8(0)).errorText, "invalid data");
    EXPECT_EQ(Read(CStoredBytes(start).U32(1).U32(0)).errorText, corrupted);
    const CStoredBytes texts = CStoredBytes(start).U32(1).U32(0).Narrow("").Narrow("").Narrow("");
    EXPECT_EQ(Read(CStoredBytes(texts)).errorText, corrupted);
    EXPECT_EQ(Read(CStoredBytes(texts).U8(1).U32(0).U32(35)).errorText, "invalid data");
    EXPECT_EQ(Read(CStoredBytes(texts).U8(1).U32(0).U32(1)).errorText, corrupted);
    EXPECT_EQ(Read(CStoredBytes(texts).U8(0).U8(0).U8(0).U8(0)).errorText, corrupted);
    const CStoredBytes obsolete = Head(1).U32(0).U32(1).Wide(u"R").Wide(u"");
    EXPECT_EQ(Read(CStoredBytes(obsolete).U8(0)).errorText, corrupted);
    EXPECT_EQ(Read(CStoredBytes(obsolete).Wide(u"old")).errorText, "invalid data");
}

TEST(StoredDefinition, NotesMissingCoefficients) {
    const CStoredBytes start = Head(3).U32(1).Add(Compound(u"A", u"A")).U32(1).Wide(u"R").Wide(u"").U32(1).U32(0);
    EXPECT_EQ(Read(CStoredBytes(start).Narrow("").Narrow("").Narrow("").U32(0).U8(0)).errorText, corrupted);
}

TEST(StoredDefinition, BelievesNoCount) {
    EXPECT_EQ(Read(Head(3).U32(0x7FFFFFFF)).errorText, corrupted);
    EXPECT_EQ(Read(Head(3).U32(0).U32(0x7FFFFFFF)).errorText, corrupted);
    EXPECT_EQ(Read(Head(0).U32(2).Add(Compound(u"A", u"A"))).errorText, corrupted);
}

// Older versions
// -------------------------------------------------------------------------------------------------------

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
