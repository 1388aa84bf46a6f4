// SPDX-License-Identifier: MIT
// Evaluation, along the nodes and along the steps of a finished expression: every case runs both ways.

#include "expression/run/EvaluateExpression.h"

#include <gtest/gtest.h>

#include <limits>

#include "expression/ExpressionBuilders.h"
#include "expression/parse/ParseExpression.h"
#include "support/AllocationCounter.h"
#include "support/SmallStack.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Outcome {
    bool succeeded = false;
    double result = -1.0;
    std::u16string errorText;
};

// Evaluates a tree both ways, expects the same of both, and gives it.
Outcome EvaluateBothWays(ExpressionTree tree, const ReactionPackDefinition& definition) {
    Outcome byNodes;
    byNodes.succeeded = EvaluateExpression(*tree, byNodes.result, definition, byNodes.errorText);
    const ExpressionRef expression(std::move(tree));
    Outcome bySteps;
    bySteps.succeeded = EvaluateExpression(expression, bySteps.result, definition, bySteps.errorText);
    const bool areBothNotNumbers = byNodes.result != byNodes.result && bySteps.result != bySteps.result;
    const bool isSame = byNodes.succeeded == bySteps.succeeded && byNodes.errorText == bySteps.errorText &&
                        (areBothNotNumbers || BitsOf(byNodes.result) == BitsOf(bySteps.result));
    EXPECT_TRUE(isSame) << Show(expression.root.get());
    return byNodes;
}

Outcome EvaluateText(std::u16string_view text, const ReactionPackDefinition& definition) {
    std::u16string errorText;
    ExpressionTree tree = ParseExpression(definition, text, errorText, nullptr);
    EXPECT_NE(tree, nullptr) << Utf8FromUtf16(errorText);
    return tree ? EvaluateBothWays(std::move(tree), definition) : Outcome();
}

struct ValueCase {
    const char* name;
    const char16_t* text;
    double temperature;
    double value;
};

const ValueCase valueCases[] = {
    {"Constant", u"2.5", 0, 2.5},
    {"Temperature", u"T", 300, 300},
    {"Pressure", u"P", 0, 101325},
    {"Molarity", u"C(b)", 0, 11},
    {"Activity", u"A(b)", 0, 12},
    {"Fugacity", u"F(b)", 0, 13},
    {"MoleFraction", u"X(b)", 0, 14},
    {"Addition", u"T+2", 3, 5},
    {"Subtraction", u"T-2", 3, 1},
    {"Multiplication", u"T*2", 3, 6},
    {"Division", u"T/2", 3, 1.5},
    {"Negation", u"-T", 0, -0.0},
    {"Power", u"T^3", 3, 27},
    {"ZeroToTheZero", u"T^T", 0, 1},
    {"PowerOfNotANumber", u"T^2", notANumber, notANumber},
    {"SquareRoot", u"SQRT(T)", 9, 3},
    {"SquareRootOfZero", u"SQRT(T)", 0, 0},
    {"SquareRootOfNotANumber", u"SQRT(T)", notANumber, notANumber},
    {"Sine", u"SIN(T)", 0, 0},
    {"Cosine", u"COS(T)", 0, 1},
    {"Tangent", u"TAN(T)", 0, 0},
    {"HyperbolicSine", u"SINH(T)", 0, 0},
    {"HyperbolicCosine", u"COSH(T)", 0, 1},
    {"HyperbolicTangent", u"TANH(T)", 100, 1},
    {"ArcSine", u"ASIN(T)", 0, 0},
    {"ArcSineAtItsEnd", u"ASIN(T)", 1, 1.5707963267948966},
    {"ArcCosine", u"ACOS(T)", 1, 0},
    {"ArcCosineAtItsEnd", u"ACOS(T)", -1, 3.141592653589793},
    {"ArcTangent", u"ATAN(T)", infinity, 1.5707963267948966},
    {"AbsoluteValue", u"ABS(T)", -3, 3},
    {"Floor", u"FLOOR(T)", -2.5, -3},
    {"Ceil", u"CEIL(T)", -2.5, -2},
    {"RoundUp", u"ROUND(T)", 2.5, 3},
    {"RoundUpBelowZero", u"ROUND(T)", -2.5, -2},
    {"Exponential", u"EXP(T)", 0, 1},
    {"ExponentialOverflows", u"EXP(T)", 1000, infinity},
    {"Logarithm", u"LOG(T)", 1, 0},
    {"LogarithmOfZero", u"LOG(T)", 0, -infinity},
    {"LogarithmOfNotANumber", u"LOG(T)", notANumber, notANumber},
    {"DecimalLogarithm", u"LOG10(T)", 1000, 3},
    {"DecimalLogarithmOfZero", u"LOG10(T)", 0, -infinity},
    {"Minimum", u"MIN(T,2)", 3, 2},
    {"MinimumOfNotANumberFirst", u"MIN(T,2)", notANumber, 2},
    {"MinimumOfNotANumberSecond", u"MIN(2,T)", notANumber, notANumber},
    {"Maximum", u"MAX(T,2)", 3, 3},
    {"MaximumOfNotANumberFirst", u"MAX(T,2)", notANumber, 2},
    {"MaximumOfNotANumberSecond", u"MAX(2,T)", notANumber, notANumber},
    // Zeros are equal whatever their sign, so the second one comes out.
    {"MinimumOfZeroAndItsNegative", u"MIN(0,T)", -0.0, -0.0},
    {"MinimumOfNegativeZeroAndZero", u"MIN(T,0)", -0.0, 0.0},
    {"MaximumOfZeroAndItsNegative", u"MAX(0,T)", -0.0, -0.0},
    {"MaximumOfNegativeZeroAndZero", u"MAX(T,0)", -0.0, 0.0},
    {"FoldedMinimumOfZeroAndItsNegative", u"MIN(0,-0)", 0, -0.0},
    {"FoldedMinimumOfNegativeZeroAndZero", u"MIN(-0,0)", 0, 0.0},
    {"FoldedMaximumOfZeroAndItsNegative", u"MAX(0,-0)", 0, -0.0},
    {"FoldedMaximumOfNegativeZeroAndZero", u"MAX(-0,0)", 0, 0.0},
    {"Remainder", u"MOD(T,3)", -7, -1},
    {"RemainderOfZero", u"MOD(1,T)", 0, notANumber},
    {"DivisionByNotANumber", u"1/T", notANumber, notANumber},
    {"DivisionOfInfinities", u"T/T", infinity, notANumber},
};

class EvaluatedTexts : public testing::TestWithParam<ValueCase> {};

TEST_P(EvaluatedTexts, GiveTheirValue) {
    const auto definition = MakeDefinitionOf({u"a", u"b"});
    definition->temperature = GetParam().temperature;
    definition->pressure = 101325;
    definition->molarity[1] = 11;
    definition->activity[1] = 12;
    definition->fugacity[1] = 13;
    definition->moleFraction[1] = 14;
    const Outcome outcome = EvaluateText(GetParam().text, *definition);
    EXPECT_TRUE(outcome.succeeded);
    EXPECT_EQ(outcome.errorText, u"");
    if (GetParam().value != GetParam().value) {
        EXPECT_NE(outcome.result, outcome.result);
    } else {
        EXPECT_EQ(BitsOf(outcome.result), BitsOf(GetParam().value)) << outcome.result;
    }
}
INSTANTIATE_TEST_SUITE_P(Table, EvaluatedTexts, testing::ValuesIn(valueCases),
                         [](const auto& row) { return std::string(row.param.name); });

struct FailureCase {
    const char* name;
    const char16_t* text;
    double temperature;
    const char16_t* errorText;
};

const FailureCase failureCases[] = {
    {"DivisionByZero", u"1/T", 0, u"division by zero"},
    {"DivisionByNegativeZero", u"1/T", -0.0, u"division by zero"},
    {"ZeroByZero", u"T/T", 0, u"division by zero"},
    {"NegativeBase", u"T^2", -1, u"negative base in power"},
    {"NegativeBaseOfASum", u"(0-8-T)^(1+T)", 0, u"negative base in power"},
    {"SquareRoot", u"SQRT(T)", -1e-300, u"sqrt of negative number"},
    {"ArcSineBelow", u"ASIN(T)", -1.5, u"domain error in asin"},
    {"ArcSineAbove", u"ASIN(T)", 1.0000000000000002, u"domain error in asin"},
    {"ArcCosineBelow", u"ACOS(T)", -infinity, u"domain error in acos"},
    {"ArcCosineAbove", u"ACOS(T)", 2, u"domain error in acos"},
    {"Logarithm", u"LOG(T)", -1, u"ln of negative number"},
    {"DecimalLogarithm", u"LOG10(T)", -1, u"log of negative number"},
    {"FirstOfTwo", u"SQRT(0-T)+LOG(0-T)", 1, u"sqrt of negative number"},
    {"FirstOfTwoDeeper", u"MAX(LOG10(0-T),1/(T-T))", 1, u"log of negative number"},
    {"InsideOut", u"1/(0*SQRT(0-T))", 1, u"sqrt of negative number"},
};

class RefusedOperands : public testing::TestWithParam<FailureCase> {};

TEST_P(RefusedOperands, GiveTheirTextAndNotANumber) {
    const auto definition = MakeDefinitionOf({});
    definition->temperature = GetParam().temperature;
    const Outcome outcome = EvaluateText(GetParam().text, *definition);
    EXPECT_FALSE(outcome.succeeded);
    EXPECT_EQ(BitsOf(outcome.result), quietNaNBits);
    EXPECT_EQ(outcome.errorText, GetParam().errorText);
}
INSTANTIATE_TEST_SUITE_P(Table, RefusedOperands, testing::ValuesIn(failureCases),
                         [](const auto& row) { return std::string(row.param.name); });

ExpressionTree T() {
    return MakeNode(NodeKind::Temperature);
}

ExpressionTree Negative() {
    return MakeNode(NodeKind::Sqrt, MakeConstant(-1));
}

struct MalformedCase {
    const char* name;
    ExpressionTree (*makeTree)();
    const char16_t* errorText;
};

constexpr const char16_t* unknownType = u"internal error: unknown expression type";

const MalformedCase malformedCases[] = {
    {"MolecularWeight", [] { return MakeCompoundLeaf(NodeKind::MolecularWeight, 0); }, unknownType},
    {"Failed", [] { return MakeNode(NodeKind::Failed); }, unknownType},
    {"List", [] { return MakeNode(NodeKind::ExpressionList, T()); }, unknownType},
    {"KindAboveAll", [] { return MakeNode(static_cast<NodeKind>(35)); }, unknownType},
    {"KindFarAboveAll", [] { return MakeNode(static_cast<NodeKind>(0x7FFFFFFF), T(), T()); }, unknownType},
    {"KindBelowAll", [] { return MakeNode(static_cast<NodeKind>(-2)); }, unknownType},
    {"CompoundBeyondTheLast", [] { return MakeCompoundLeaf(NodeKind::Molarity, 2); }, unknownType},
    {"CompoundFarBeyond", [] { return MakeCompoundLeaf(NodeKind::Activity, 0x7FFFFFFF); }, unknownType},
    {"NegativeCompound", [] { return MakeCompoundLeaf(NodeKind::MoleFraction, -1); }, unknownType},
    {"SmallestCompound", [] { return MakeCompoundLeaf(NodeKind::Fugacity, std::numeric_limits<std::int32_t>::min()); },
     unknownType},
    {"AdditionOfOne", [] { return MakeNode(NodeKind::Addition, T()); }, unknownType},
    {"DivisionOfOne", [] { return MakeNode(NodeKind::Division, T()); }, unknownType},
    {"SquareRootOfNone", [] { return MakeNode(NodeKind::Sqrt); }, unknownType},
    {"ArgumentsFailBeforeTheirCount", [] { return MakeNode(NodeKind::Addition, Negative()); },
     u"sqrt of negative number"},
    {"ArgumentsOfAnUnknownKindFailFirst", [] { return MakeNode(static_cast<NodeKind>(99), Negative()); },
     u"sqrt of negative number"},
    {"EmptySlot", [] { return MakeNode(NodeKind::Addition, T(), ExpressionTree()); }, unknownType},
    {"EmptySlotBeforeAFailure", [] { return MakeNode(NodeKind::Addition, ExpressionTree(), Negative()); }, unknownType},
    {"FailureBeforeAnEmptySlot", [] { return MakeNode(NodeKind::Addition, Negative(), ExpressionTree()); },
     u"sqrt of negative number"},
    {"SurplusArgumentFails", [] { return MakeNode(NodeKind::Addition, T(), T(), Negative()); },
     u"sqrt of negative number"},
    {"SurplusArgumentOfAGuardedKindFailsFirst",
     [] { return MakeNode(NodeKind::Division, T(), MakeConstant(0), T(), Negative()); }, u"sqrt of negative number"},
    {"ArgumentOfALeafFails", [] { return MakeNode(NodeKind::Pressure, Negative()); }, u"sqrt of negative number"},
};

class MalformedTrees : public testing::TestWithParam<MalformedCase> {};

TEST_P(MalformedTrees, FailWithoutReadingBeyondTheirData) {
    const auto definition = MakeDefinitionOf({u"a", u"b"});
    definition->temperature = 1;
    const Outcome outcome = EvaluateBothWays(GetParam().makeTree(), *definition);
    EXPECT_FALSE(outcome.succeeded);
    EXPECT_EQ(BitsOf(outcome.result), quietNaNBits);
    EXPECT_EQ(outcome.errorText, GetParam().errorText);
}
INSTANTIATE_TEST_SUITE_P(Table, MalformedTrees, testing::ValuesIn(malformedCases),
                         [](const auto& row) { return std::string(row.param.name); });

struct SurplusCase {
    const char* name;
    ExpressionTree (*makeTree)();
    double value;
};

const SurplusCase surplusCases[] = {
    {"ThreeOperands",
     [] { return MakeNode(NodeKind::Subtraction, MakeConstant(7), MakeConstant(2), MakeConstant(100)); }, 5},
    {"FourOperands",
     [] { return MakeNode(NodeKind::Division, MakeConstant(7), MakeConstant(2), MakeConstant(0), MakeConstant(0)); },
     3.5},
    {"TwoOperandsOfOne", [] { return MakeNode(NodeKind::Sqrt, MakeConstant(9), MakeConstant(-1)); }, 3},
    {"ArgumentsOfALeaf", [] { return MakeNode(NodeKind::Temperature, MakeConstant(1), MakeConstant(2)); }, 300},
};

class SurplusArguments : public testing::TestWithParam<SurplusCase> {};

TEST_P(SurplusArguments, AreComputedAndDropped) {
    const auto definition = MakeDefinitionOf({});
    definition->temperature = 300;
    const Outcome outcome = EvaluateBothWays(GetParam().makeTree(), *definition);
    EXPECT_TRUE(outcome.succeeded);
    EXPECT_EQ(outcome.result, GetParam().value);
}
INSTANTIATE_TEST_SUITE_P(Table, SurplusArguments, testing::ValuesIn(surplusCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(EvaluateExpression, ReadsNoWorkingArrayThatIsNotThere) {
    const auto definition = MakeDefinitionOf({u"a"});
    definition->ReleaseWorkArrays();
    for (const NodeKind kind : {NodeKind::Molarity, NodeKind::MoleFraction, NodeKind::Activity, NodeKind::Fugacity}) {
        EXPECT_EQ(EvaluateBothWays(MakeCompoundLeaf(kind, 0), *definition).errorText, unknownType);
    }
}

TEST(EvaluateExpression, ReplacesOrExtendsWhatTheCallerLeft) {
    const auto definition = MakeDefinitionOf({});
    double result = 0;
    std::u16string errorText = u"before|";
    EXPECT_FALSE(EvaluateExpression(*Negative(), result, *definition, errorText));
    EXPECT_EQ(errorText, u"sqrt of negative number");
    errorText = u"before|";
    EXPECT_FALSE(EvaluateExpression(*MakeNode(NodeKind::Failed), result, *definition, errorText));
    EXPECT_EQ(errorText, u"before|internal error: unknown expression type");
    errorText = u"before|";
    EXPECT_TRUE(EvaluateExpression(*MakeConstant(1), result, *definition, errorText));
    EXPECT_EQ(errorText, u"before|");
}

TEST(EvaluateExpression, GivesTheSameByNodesAndBySteps) {
    const auto definition = MakeDefinitionOf({u"a", u"b", u"c"});
    std::mt19937 random(11);
    int successCount = 0;
    int malformedCount = 0;
    for (int round = 0; round < 20000; ++round) {
        definition->temperature = RandomBelow(random, 5) - 1.0;
        definition->pressure = random() % 16 == 0 ? notANumber : RandomBelow(random, 1000) / 100.0;
        for (std::size_t i = 0; i < 3; ++i) {
            definition->molarity[i] = RandomBelow(random, 100) / 10.0;
            definition->activity[i] = random() % 16 == 0 ? infinity : RandomBelow(random, 100) / 50.0;
            definition->fugacity[i] = RandomBelow(random, 100000);
            definition->moleFraction[i] = RandomBelow(random, 101) / 100.0;
        }
        const Outcome outcome =
            EvaluateBothWays(MakeRandomTree(random, RandomBelow(random, 9), round % 2 == 1), *definition);
        if (outcome.succeeded) ++successCount;
        if (outcome.errorText == unknownType) ++malformedCount;
    }
    EXPECT_GT(successCount, 2000);  // the trees are not all failures
    EXPECT_GT(malformedCount, 500);
}

TEST(EvaluateExpression, AllocatesNothingOnTheWayToSuccess) {
    auto definition = MakeDefinitionOf({u"He"});
    definition->temperature = 1;
    std::u16string errorText;
    const ExpressionRef ordinary(
        ParseExpression(*definition, u"EXP(-8000/(R*T))*X(He)^0.5+SQRT(T)*LOG10(P+1)", errorText, nullptr));
    const ExpressionRef leftDeep(MakeDeepTree(DeepShape::LeftDeep, 10000, NodeKind::Temperature));
    const ExpressionRef rightDeep(MakeDeepTree(DeepShape::RightDeep, 10000, NodeKind::Temperature));
    double result = 0;
    for (const ExpressionRef* expression : {&ordinary, &leftDeep, &rightDeep}) {
        const CAllocationCounter allocations;
        const bool succeeded = EvaluateExpression(*expression, result, *definition, errorText);
        EXPECT_EQ(allocations.Count(), 0u);
        EXPECT_TRUE(succeeded);
    }
    EXPECT_EQ(result, 10001.0);
}

struct DeepCase {
    const char* name;
    DeepShape shape;
    double value;
};

const DeepCase deepCases[] = {
    {"LeftDeep", DeepShape::LeftDeep, 1'000'001},
    {"RightDeep", DeepShape::RightDeep, 1'000'001},
    {"Chain", DeepShape::Chain, 1},
};

class DeepEvaluation : public testing::TestWithParam<DeepCase> {};

TEST_P(DeepEvaluation, OfAMillionLevelsFitsASmallStack) {
    RunOnSmallStack([] {
        const auto definition = MakeDefinitionOf({});
        definition->temperature = 1;
        const Outcome outcome =
            EvaluateBothWays(MakeDeepTree(GetParam().shape, 1'000'000, NodeKind::Temperature), *definition);
        EXPECT_TRUE(outcome.succeeded);
        EXPECT_EQ(outcome.result, GetParam().value);
    });
}
INSTANTIATE_TEST_SUITE_P(Table, DeepEvaluation, testing::ValuesIn(deepCases),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace reka::test
