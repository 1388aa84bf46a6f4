// SPDX-License-Identifier: MIT
// The check on trees made by hand, those that no text leads to among them.

#include "expression/parse/CheckExpression.h"

#include <gtest/gtest.h>

#include "expression/ExpressionBuilders.h"
#include "support/AllocationCounter.h"
#include "support/SmallStack.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

ExpressionTree T() {
    return MakeNode(NodeKind::Temperature);
}

// A function as the grammar delivers it, with the list of its arguments.
template <class... Arguments>
ExpressionTree MakeCall(NodeKind kind, const Arguments&... arguments) {
    return MakeNode(kind, MakeNode(NodeKind::ExpressionList, arguments...));
}

struct CheckCase {
    const char* name;
    ExpressionTree (*makeTree)();
    const char* checked;
    const char16_t* errorText;
};

const CheckCase checkCases[] = {
    // Dissolving and folding.
    {"ListOfOne", [] { return MakeCall(NodeKind::Exp, T()); }, "21(29)", u""},
    {"ListOfTwo", [] { return MakeCall(NodeKind::Mod, T(), T()); }, "27(29,29)", u""},
    {"ListInsideAList", [] { return MakeNode(NodeKind::Abs, MakeCall(NodeKind::ExpressionList, T())); }, "17(7(29))",
     u"unexpected expression list\r\n"},
    {"FoldsFromTheLeaves",
     [] {
         return MakeNode(NodeKind::Multiplication, MakeCall(NodeKind::Sqrt, MakeConstant(4)),
                         MakeNode(NodeKind::Negation, MakeConstant(3)));
     },
     "-6", u""},
    {"FoldsBesideALeaf",
     [] {
         return MakeNode(NodeKind::Addition, T(), MakeNode(NodeKind::Subtraction, MakeConstant(5), MakeConstant(3)));
     },
     "1(29,2)", u""},
    {"FailedNodeStays", [] { return MakeNode(NodeKind::Addition, MakeNode(NodeKind::Failed), MakeConstant(1)); },
     "1(-1,1)", u""},
    {"FailedNodeKeepsItsArguments",
     [] { return MakeNode(NodeKind::Failed, MakeNode(NodeKind::Negation, MakeConstant(1)), T()); }, "-1(-1,29)", u""},
    {"EmptySlotStays", [] { return MakeNode(NodeKind::Addition, ExpressionTree(), MakeConstant(1)); }, "1(null,1)",
     u""},
    {"MolecularWeight", [] { return MakeCompoundLeaf(NodeKind::MolecularWeight, 1); }, "18.5", u""},
    {"MolecularWeightFoldsOn",
     [] { return MakeNode(NodeKind::Multiplication, MakeCompoundLeaf(NodeKind::MolecularWeight, 1), MakeConstant(2)); },
     "37", u""},
    {"MolecularWeightOfNoCompound", [] { return MakeCompoundLeaf(NodeKind::MolecularWeight, 2); }, "32:2",
     u"internal error: unknown expression type\r\n"},
    {"MolecularWeightOfANegativeIndex", [] { return MakeCompoundLeaf(NodeKind::MolecularWeight, -1); }, "32:-1",
     u"internal error: unknown expression type\r\n"},
    // Division by a constant.
    {"DivisionByZero", [] { return MakeNode(NodeKind::Division, T(), MakeConstant(0)); }, "4(29,0)",
     u"division by zero\r\n"},
    {"DivisionByNegativeZero", [] { return MakeNode(NodeKind::Division, T(), MakeConstant(-0.0)); }, "4(29,-0)",
     u"division by zero\r\n"},
    {"DivisionThatFoldsToZeroOver",
     [] {
         return MakeNode(NodeKind::Division, MakeConstant(1),
                         MakeNode(NodeKind::Subtraction, MakeConstant(1), MakeConstant(1)));
     },
     "4(1,0)", u"division by zero\r\n"},
    {"DivisionByNotANumber",
     [] {
         return MakeNode(NodeKind::Abs, MakeNode(NodeKind::Division, MakeConstant(1),
                                                 MakeConstant(std::bit_cast<double>(quietNaNBits))));
     },
     "nan", u""},
    // Argument counts.
    {"ConstantWithArguments",
     [] {
         ExpressionTree constant = MakeConstant(1);
         AppendCopy(constant, MakeConstant(2));
         return constant;
     },
     "1(2)", u"internal error: real constant with sub expressions\r\n"},
    {"AdditionOfOne", [] { return MakeNode(NodeKind::Addition, T()); }, "1(29)",
     u"addition should have two arguments\r\n"},
    {"SubtractionOfThree", [] { return MakeNode(NodeKind::Subtraction, T(), T(), T()); }, "2(29,29,29)",
     u"subtraction should have two arguments\r\n"},
    {"MultiplicationOfNone", [] { return MakeNode(NodeKind::Multiplication); }, "3",
     u"multiplication should have two arguments\r\n"},
    {"DivisionOfOne", [] { return MakeNode(NodeKind::Division, MakeConstant(0)); }, "4(0)",
     u"division should have two arguments\r\n"},
    {"NegationOfTwo", [] { return MakeNode(NodeKind::Negation, T(), T()); }, "5(29,29)",
     u"negation should have one argument\r\n"},
    {"PowerOfOne", [] { return MakeNode(NodeKind::Power, T()); }, "6(29)", u"power should have two arguments\r\n"},
    {"ListLeftOver", [] { return MakeNode(NodeKind::ExpressionList); }, "7", u"unexpected expression list\r\n"},
    {"ListAmongArguments", [] { return MakeNode(NodeKind::Addition, MakeNode(NodeKind::ExpressionList), T()); },
     "1(7,29)", u"unexpected expression list\r\n"},
    {"PressureWithArguments", [] { return MakeNode(NodeKind::Pressure, T()); }, "28(29)",
     u"pressure should not have arguments\r\n"},
    {"TemperatureWithArguments", [] { return MakeNode(NodeKind::Temperature, T()); }, "29(29)",
     u"temperature should not have arguments\r\n"},
    {"MolarityWithArguments", [] { return MakeNode(NodeKind::Molarity, T()); }, "30:0(29)",
     u"internal error: array property with sub expressions\r\n"},
    {"MoleFractionWithArguments", [] { return MakeNode(NodeKind::MoleFraction, T()); }, "31:0(29)",
     u"internal error: array property with sub expressions\r\n"},
    {"MolecularWeightWithArguments", [] { return MakeNode(NodeKind::MolecularWeight, T()); }, "32:0(29)",
     u"molecular weight should not have arguments\r\n"},
    {"ActivityWithArguments", [] { return MakeNode(NodeKind::Activity, T()); }, "33:0(29)",
     u"internal error: array property with sub expressions\r\n"},
    {"FugacityWithArguments", [] { return MakeNode(NodeKind::Fugacity, T()); }, "34:0(29)",
     u"internal error: array property with sub expressions\r\n"},
    {"KindAboveAll", [] { return MakeNode(static_cast<NodeKind>(35)); }, "35",
     u"internal error: unknown expression type\r\n"},
    {"KindBelowAll", [] { return MakeNode(static_cast<NodeKind>(-2)); }, "-2",
     u"internal error: unknown expression type\r\n"},
    {"FaultsFromLeftToRight",
     [] {
         return MakeNode(NodeKind::Addition, MakeNode(NodeKind::Sqrt), MakeNode(NodeKind::Pressure, T()),
                         MakeNode(static_cast<NodeKind>(99)));
     },
     "1(8,28(29),99)",
     u"SQRT should have one argument\r\npressure should not have arguments\r\n"
     u"internal error: unknown expression type\r\naddition should have two arguments\r\n"},
};

class CheckedTrees : public testing::TestWithParam<CheckCase> {};

TEST_P(CheckedTrees, AreFinishedOrRefused) {
    const auto definition = MakeDefinitionOf({u"Ar", u"Water"});
    definition->compounds[1]->molecularWeight = 18.5;
    const ExpressionTree tree = GetParam().makeTree();
    std::u16string errorText = u"before|";
    CheckExpression(*tree, *definition, errorText);
    EXPECT_EQ(Show(tree.get()), GetParam().checked);
    EXPECT_EQ(Utf8FromUtf16(errorText), "before|" + Utf8FromUtf16(GetParam().errorText));
}
INSTANTIATE_TEST_SUITE_P(Table, CheckedTrees, testing::ValuesIn(checkCases),
                         [](const auto& row) { return std::string(row.param.name); });

struct FunctionCase {
    const char* word;
    NodeKind kind;
    int argumentCount;
};

const FunctionCase functionCases[] = {
    {"SQRT", NodeKind::Sqrt, 1},   {"SIN", NodeKind::Sin, 1},     {"COS", NodeKind::Cos, 1},
    {"SINH", NodeKind::Sinh, 1},   {"COSH", NodeKind::Cosh, 1},   {"ASIN", NodeKind::Asin, 1},
    {"ACOS", NodeKind::Acos, 1},   {"TAN", NodeKind::Tan, 1},     {"ATAN", NodeKind::Atan, 1},
    {"ABS", NodeKind::Abs, 1},     {"FLOOR", NodeKind::Floor, 1}, {"CEIL", NodeKind::Ceil, 1},
    {"ROUND", NodeKind::Round, 1}, {"EXP", NodeKind::Exp, 1},     {"LOG", NodeKind::Log, 1},
    {"LOG10", NodeKind::Log10, 1}, {"TANH", NodeKind::Tanh, 1},   {"MIN", NodeKind::Min, 2},
    {"MAX", NodeKind::Max, 2},     {"MOD", NodeKind::Mod, 2},
};

class FunctionWords : public testing::TestWithParam<FunctionCase> {};

TEST_P(FunctionWords, StandInTheLineOfAWrongCount) {
    const auto [word, kind, argumentCount] = GetParam();
    const std::string one = std::string(word) + " should have one argument\r\n";
    const std::string two = std::string(word) + " should have two arguments\r\n";
    const auto definition = MakeDefinitionOf({});
    for (int count = 0; count <= 4; ++count) {
        ExpressionTree node = MakeNode(kind);
        for (int i = 0; i < count; ++i) AppendCopy(node, T());
        std::u16string errorText;
        CheckExpression(*node, *definition, errorText);
        const std::string expected = count == argumentCount ? "" : argumentCount == 1 ? one : two;
        EXPECT_EQ(Utf8FromUtf16(errorText), expected) << count;
    }
}
INSTANTIATE_TEST_SUITE_P(Table, FunctionWords, testing::ValuesIn(functionCases),
                         [](const auto& row) { return std::string(row.param.word); });

// In a numeric field there is no material: the kinds behind the functions are unknown.
TEST(CheckScalarExpression, RefusesWhatReadsAMaterial) {
    for (std::int32_t kind = static_cast<std::int32_t>(NodeKind::Pressure); kind <= nodeKindCount; ++kind) {
        const ExpressionTree node = MakeNode(static_cast<NodeKind>(kind));
        std::u16string errorText;
        CheckScalarExpression(*node, errorText);
        EXPECT_EQ(Utf8FromUtf16(errorText), "internal error: unknown expression type\r\n") << kind;
    }
}

TEST(CheckScalarExpression, FoldsWhatItAccepts) {
    const ExpressionTree tree = MakeNode(NodeKind::Multiplication, MakeCall(NodeKind::Sqrt, MakeConstant(4)),
                                         MakeCall(NodeKind::Mod, MakeConstant(9), MakeConstant(5)));
    std::u16string errorText;
    CheckScalarExpression(*tree, errorText);
    EXPECT_EQ(Show(tree.get()), "8");
    EXPECT_EQ(errorText, u"");
}

class DeepChecks : public testing::TestWithParam<DeepShape> {};

TEST_P(DeepChecks, FoldAMillionLevelsOnASmallStack) {
    RunOnSmallStack([] {
        const CAllocationCounter allocations;
        {
            const auto definition = MakeDefinitionOf({});
            const ExpressionTree tree = MakeDeepTree(GetParam(), 1'000'000, NodeKind::RealConstant);
            std::u16string errorText;
            CheckExpression(*tree, *definition, errorText);
            EXPECT_EQ(Show(tree.get()), "0");
            EXPECT_EQ(errorText, u"");
        }
        EXPECT_EQ(allocations.Left(), 0);
    });
}
INSTANTIATE_TEST_SUITE_P(Shapes, DeepChecks,
                         testing::Values(DeepShape::LeftDeep, DeepShape::RightDeep, DeepShape::Chain));

}  // namespace
}  // namespace reka::test
