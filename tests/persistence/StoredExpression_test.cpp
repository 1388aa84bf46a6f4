// SPDX-License-Identifier: MIT
// Stored trees: their bytes, what is accepted, and what a reader takes for them.

#include "persistence/StoredExpression.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "expression/run/EvaluateExpression.h"
#include "support/AllocationCounter.h"
#include "support/Builders.h"
#include "support/SmallStack.h"
#include "support/StoredBytes.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

constexpr std::uint32_t multiplication = 3;
constexpr std::uint32_t temperature = 29;
constexpr std::uint32_t molarityLeaf = 30;

/// The expression field of 2*T with its mask, byte by byte.
const std::vector<std::uint8_t> temperatureTimesTwo = {
    0x01, 0x08, 0x00, 0x00, 0x00, 0x03, 0x00, 0x00, 0x00, 0x02, 0x00, 0x00, 0x00, 0x1D, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x40};

struct ReadField {
    bool isRead = false;
    std::unique_ptr<ExpressionRef> expression;
    std::string errorText;
    std::size_t left = 0;
};

ReadField Read(const std::vector<std::uint8_t>& bytes) {
    ReadField field;
    CByteReader reader(bytes);
    std::u16string errorText;
    field.isRead = ReadStoredExpression(field.expression, reader, errorText);
    field.errorText = Utf8FromUtf16(errorText);
    field.left = reader.Remaining();
    return field;
}

std::vector<std::uint8_t> Write(const ExpressionRef* expression) {
    std::vector<std::uint8_t> bytes;
    CByteWriter writer(bytes);
    WriteStoredExpression(expression, writer);
    return bytes;
}

/// A field with the mask 0 in front of `node`.
std::vector<std::uint8_t> FieldOf(const CStoredBytes& node) {
    return CStoredBytes().U8(1).U32(0).Add(node).bytes;
}

CStoredBytes Constant(double value) {
    return CStoredBytes().U32(0).F64(value);
}

TEST(StoredExpression, IsTheBytesOfItsForm) {
    const auto definition = MakePackage({});
    const auto expression = Parse(*definition, u"T*2");
    EXPECT_EQ(Write(expression.get()), temperatureTimesTwo);
    EXPECT_EQ(StoredExpressionSize(expression.get()), 33U);
    EXPECT_EQ(Write(nullptr), std::vector<std::uint8_t>{0});
    EXPECT_EQ(StoredExpressionSize(nullptr), 1U);
}

TEST(StoredExpression, ReadsTheBytesOfItsForm) {
    const ReadField field = Read(temperatureTimesTwo);
    ASSERT_TRUE(field.isRead);
    EXPECT_EQ(field.left, 0U);
    EXPECT_EQ(field.expression->dependencies, dependency::temperature);
    const ExpressionNode& root = *field.expression->root;
    EXPECT_EQ(root.kind, NodeKind::Multiplication);
    ASSERT_EQ(root.argumentCount, 2);
    EXPECT_EQ(root.arguments[0]->kind, NodeKind::Temperature);
    EXPECT_EQ(root.arguments[0]->argumentCount, 0);
    EXPECT_EQ(root.arguments[1]->kind, NodeKind::RealConstant);
    EXPECT_EQ(root.arguments[1]->value, 2.0);
}

TEST(StoredExpression, StopsBehindTheField) {
    auto bytes = temperatureTimesTwo;
    bytes.push_back(7);
    EXPECT_EQ(Read(bytes).left, 1U);
    const ReadField absent = Read({0, 7});
    EXPECT_TRUE(absent.isRead);
    EXPECT_EQ(absent.expression, nullptr);
    EXPECT_EQ(absent.left, 1U);
}

TEST(StoredExpression, TakesEveryFlagButZeroForPresent) {
    auto bytes = temperatureTimesTwo;
    bytes[0] = 0xFE;
    EXPECT_NE(Read(bytes).expression, nullptr);
}

TEST(StoredExpression, LeavesItsTargetWhereThereIsNone) {
    const auto definition = MakePackage({});
    auto expression = Parse(*definition, u"T");
    const ExpressionRef* const before = expression.get();
    std::u16string errorText;
    const std::uint8_t none[] = {0};
    CByteReader reader(none);
    EXPECT_TRUE(ReadStoredExpression(expression, reader, errorText));
    EXPECT_EQ(expression.get(), before);
}

struct NodeCase {
    const char* name;
    CStoredBytes node;
    const char* errorText;  // empty for a node that reads
};

const NodeCase nodeCases[] = {
    {"Kind34", CStoredBytes().U32(34).U32(0), ""},
    {"Kind35", CStoredBytes().U32(35).U32(0), "invalid data"},
    {"KindMinusOne", CStoredBytes().U32(0xFFFFFFFF).U32(0), "invalid data"},
    {"KindBeyond31Bits", CStoredBytes().U32(0x80000000).U32(0), "invalid data"},
    {"BadKindWithoutMore", CStoredBytes().U32(35), "invalid data"},
    {"FourArguments",
     CStoredBytes().U32(multiplication).U32(4).Add(Constant(1)).Add(Constant(2)).Add(Constant(3)).Add(Constant(4)), ""},
    {"FiveArguments", CStoredBytes().U32(multiplication).U32(5), "invalid data"},
    {"MinusOneArguments", CStoredBytes().U32(multiplication).U32(0xFFFFFFFF), "invalid data"},
    {"OneArgumentOfAddition", CStoredBytes().U32(1).U32(1).Add(Constant(1)), ""},
    {"ExpressionList", CStoredBytes().U32(7).U32(0), ""},
    {"MolecularWeight", CStoredBytes().U32(32).U32(0), ""},
    {"CompoundBeyondEveryList", CStoredBytes().U32(molarityLeaf).U32(0x7FFFFFFF), ""},
    {"NoKind", CStoredBytes(), "data corrupted"},
    {"HalfAKind", CStoredBytes().U8(3).U8(0), "data corrupted"},
    {"NoCount", CStoredBytes().U32(multiplication), "data corrupted"},
    {"HalfAConstant", CStoredBytes().U32(0).U32(0), "data corrupted"},
    {"HalfAnIndex", CStoredBytes().U32(molarityLeaf).U8(0), "data corrupted"},
    {"MissingArgument", CStoredBytes().U32(multiplication).U32(2).Add(Constant(1)), "data corrupted"},
    {"BadArgument", CStoredBytes().U32(multiplication).U32(2).Add(Constant(1)).U32(99), "invalid data"},
};
void PrintTo(const NodeCase& row, std::ostream* stream) {
    *stream << row.name;
}

class StoredNodes : public testing::TestWithParam<NodeCase> {};

TEST_P(StoredNodes, ReadOrTellWhy) {
    const ReadField field = Read(FieldOf(GetParam().node));
    const std::string expected = GetParam().errorText;
    EXPECT_EQ(field.isRead, expected.empty());
    EXPECT_EQ(field.errorText, expected);
    EXPECT_EQ(field.expression != nullptr, expected.empty());
    if (field.expression) {
        EXPECT_EQ(field.left, 0U);
        field.expression->dependencies = 0;
        EXPECT_EQ(Write(field.expression.get()), FieldOf(GetParam().node));
    }
}
INSTANTIATE_TEST_SUITE_P(Table, StoredNodes, testing::ValuesIn(nodeCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(StoredExpression, ReadsATreeIntoOneAllocation) {
    const auto definition = MakePackage({u"i"});
    const ReactionDefinition& reaction = AddKinetic(*definition, u"r", u"(2*EXP(-8000/(R*T))*C(i)^2+MIN(X(i),P))/3");
    const std::vector<std::uint8_t> bytes = Write(reaction.rateExpression.get());
    EXPECT_EQ(bytes.size(), StoredExpressionSize(reaction.rateExpression.get()));
    CByteReader reader(std::span<const std::uint8_t>(bytes).subspan(5));
    std::u16string errorText;
    const CAllocationCounter allocations;
    const ExpressionTree tree = ReadStoredNode(reader, errorText);
    ASSERT_TRUE(tree);
    EXPECT_EQ(allocations.Count(), 1U);
    EXPECT_EQ(reader.Remaining(), 0U);
    const ReadField field = Read(bytes);
    ASSERT_TRUE(field.isRead);
    const TreeSurvey& survey = field.expression->survey;
    const TreeSurvey again = SurveyTree(*tree);
    EXPECT_TRUE(survey.isSound && again.isSound);
    EXPECT_EQ(survey.nodeCount, again.nodeCount);
    EXPECT_EQ(survey.constantCount, again.constantCount);
    EXPECT_EQ(survey.nodeCount, reaction.rateExpression->survey.nodeCount);
    EXPECT_EQ(survey.dependencies, again.dependencies);
}

// A count is good for no more memory than the bytes behind it.
TEST(StoredExpression, AllocatesNothingForATreeThatIsNotWhole) {
    for (const NodeCase& row : nodeCases) {
        if (*row.errorText == '\0') continue;
        CByteReader reader(row.node.bytes);
        std::u16string errorText;
        const CAllocationCounter allocations;
        EXPECT_EQ(ReadStoredNode(reader, errorText), nullptr) << row.name;
        EXPECT_LE(allocations.Count(), 1U) << row.name;  // for the text
    }
}

TEST(StoredExpression, TakesASmallMultipleOfItsBytes) {
    CStoredBytes lists;
    for (int i = 0; i < 1000; ++i)
        lists.U32(7).U32(4).U32(temperature).U32(0).U32(temperature).U32(0).U32(temperature).U32(0);
    lists.U32(temperature).U32(0);
    CByteReader reader(lists.bytes);
    std::u16string errorText;
    const CAllocationCounter allocations;
    EXPECT_NE(ReadStoredNode(reader, errorText), nullptr);
    EXPECT_LT(allocations.Bytes(), 16 * lists.bytes.size());
}

TEST(StoredExpression, TellsOfAMissingFlagAndMask) {
    EXPECT_EQ(Read({}).errorText, "data corrupted");
    EXPECT_EQ(Read({1, 0, 0}).errorText, "data corrupted");
}

TEST(StoredExpression, KeepsAMaskThatDisagreesWithTheTree) {
    auto bytes = temperatureTimesTwo;
    bytes[1] = 0x31;
    bytes[4] = 0x80;
    const ReadField field = Read(bytes);
    EXPECT_EQ(field.expression->dependencies, 0x80000031U);
    EXPECT_EQ(Write(field.expression.get()), bytes);
}

TEST(StoredExpression, KeepsTheBitsOfConstants) {
    const std::uint64_t patterns[] = {0x7FF8000000000001U, 0xFFF0000000000000U, 0x8000000000000000U, 1U,
                                      0x7FF0000000000001U};
    for (const std::uint64_t bits : patterns) {
        const auto bytes = FieldOf(CStoredBytes().U32(0).Bits(bits));
        EXPECT_EQ(Write(Read(bytes).expression.get()), bytes) << std::hex << bits;
    }
}

/// What the evaluation of a stored tree gives, or its failure.
std::string Evaluate(const CStoredBytes& node, std::size_t compoundCount = 1) {
    ReactionPackDefinition definition(nullptr);
    for (std::size_t i = 0; i < compoundCount; ++i) {
        definition.compounds.push_back(std::make_unique<CompoundDefinition>());
    }
    definition.AllocateWorkArrays();
    for (std::size_t i = 0; i < compoundCount; ++i) definition.molarity[i] = 5.0;
    const ReadField field = Read(FieldOf(node));
    if (!field.expression) return field.errorText;
    double result = 0;
    std::u16string errorText;
    if (EvaluateExpression(*field.expression, result, definition, errorText)) return std::to_string(result);
    return Utf8FromUtf16(errorText);
}

const char* const unknownType = "internal error: unknown expression type";

TEST(StoredExpression, FailsToEvaluateWhatMakesNoSense) {
    EXPECT_EQ(Evaluate(CStoredBytes().U32(32).U32(0)), unknownType);
    EXPECT_EQ(Evaluate(CStoredBytes().U32(7).U32(1).Add(Constant(1))), unknownType);
    EXPECT_EQ(Evaluate(CStoredBytes().U32(1).U32(1).Add(Constant(1))), unknownType);
    EXPECT_EQ(Evaluate(CStoredBytes().U32(8).U32(0)), unknownType);
    EXPECT_EQ(Evaluate(CStoredBytes().U32(molarityLeaf).U32(0)), "5.000000");
    EXPECT_EQ(Evaluate(CStoredBytes().U32(molarityLeaf).U32(1)), unknownType);
    EXPECT_EQ(Evaluate(CStoredBytes().U32(molarityLeaf).U32(0xFFFFFFFF)), unknownType);
    EXPECT_EQ(Evaluate(CStoredBytes().U32(molarityLeaf).U32(0), 0), unknownType);
}

TEST(StoredExpression, ComputesAllArgumentsAndUsesTheFirstTwo) {
    const auto product = CStoredBytes().U32(multiplication).U32(4).Add(Constant(3)).Add(Constant(4)).Add(Constant(5));
    EXPECT_EQ(Evaluate(CStoredBytes(product).Add(Constant(6))), "12.000000");
    EXPECT_EQ(Evaluate(CStoredBytes(product).U32(32).U32(0)), unknownType);
}

/// `depth` negations around the temperature.
CStoredBytes Deep(int depth) {
    CStoredBytes node;
    for (int i = 0; i < depth; ++i) node.U32(5).U32(1);
    return node.U32(temperature).U32(0);
}

TEST(StoredExpression, NeedsNoStackForDepth) {
    const auto bytes = FieldOf(Deep(1'000'000));
    RunOnSmallStack([&] {
        ReadField field = Read(bytes);
        ASSERT_TRUE(field.isRead);
        const auto copy = field.expression->Clone();
        ReactionPackDefinition definition(nullptr);
        definition.temperature = 300;
        double result = 0;
        std::u16string errorText;
        EXPECT_TRUE(EvaluateExpression(*copy, result, definition, errorText));
        EXPECT_EQ(result, 300);
        field.expression->dependencies = 0;
        EXPECT_EQ(StoredExpressionSize(field.expression.get()), bytes.size());
        EXPECT_EQ(Write(field.expression.get()), bytes);
    });
}

TEST(StoredExpression, GivesADeepTreeUpWithoutStack) {
    auto bytes = FieldOf(Deep(1'000'000));
    bytes.pop_back();
    RunOnSmallStack([&] { EXPECT_EQ(Read(bytes).errorText, "data corrupted"); });
}

}  // namespace
}  // namespace reka::test
