// SPDX-License-Identifier: MIT
// The stored block byte by byte: what is written, what is read, and each place at which it may end too early.

#include "persistence/ReadStoredDefinition.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "persistence/StoredBlocks.h"
#include "support/Builders.h"
#include "support/FakeMessages.h"
#include "support/StoredBytes.h"

namespace reka::test {
namespace {

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
    bytes.Wide(u"Test package").Wide(u"A sample \u2192").Narrow("C:\\data\\x.pcd").U32(versionMarker).U32(3);
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

// A reader goes by the number of compounds, so what is behind would be read as something else.
TEST(StoredDefinition, HoldsACoefficientForEachCompound) {
    const auto definition = MakeSample();
    definition->reactions[0]->stoichiometry = {-1.0};
    definition->reactions[1]->stoichiometry = {-1.0, 1.0, 5.0};
    const ReadBlock read = Read(Write(*definition));
    ASSERT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->reactions[0]->stoichiometry, (std::vector<double>{-1.0, 0.0}));
    EXPECT_EQ(read.definition->reactions[1]->stoichiometry, (std::vector<double>{-1.0, 1.0}));
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
    bytes.Wide(u"").Narrow("").U32(versionMarker).U32(3).U32(0).U32(0);
    const ReadBlock read = Read(bytes);
    ASSERT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->name.View(), u"ab");
    EXPECT_EQ(SysStringLen(read.definition->name.Get()), 2U);
}

TEST(StoredDefinition, ReadsANarrowTextWithoutItsZero) {
    CStoredBytes bytes;
    bytes.Wide(u"").Wide(u"").U32(2).U8('a').U8('b').U8('c').U32(versionMarker).U32(3).U32(0).U32(0);
    const ReadBlock read = Read(bytes);
    ASSERT_TRUE(read.isRead);
    EXPECT_EQ(read.definition->pcdFile, u"abc");
}

TEST(StoredDefinition, EndsANarrowTextAtItsFirstZero) {
    CStoredBytes bytes;
    bytes.Wide(u"").Wide(u"").U32(4).U8('a').U8(0).U8('b').U8('c').U8(0).U32(versionMarker).U32(3).U32(0).U32(0);
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

}  // namespace
}  // namespace reka::test
