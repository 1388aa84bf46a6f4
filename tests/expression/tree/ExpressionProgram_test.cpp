// SPDX-License-Identifier: MIT
// The steps that texts are laid out in, and the stack of the walk that makes them.

#include "expression/tree/ExpressionProgram.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <span>
#include <vector>

#include "expression/ExpressionBuilders.h"
#include "expression/parse/ParseExpression.h"
#include "expression/run/EvaluateExpression.h"
#include "platform/HostArithmetic.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

#define TERM_NAMES(term, count) #term, "Push" #term, "Add" #term, "Subtract" #term,
#define SUM_NAMES(sum, count) #sum, "Push" #sum,
#define OPERATION_NAME(operation, count) #operation,
const char* const codeNames[] = {REKA_PROGRAM_TERMS(TERM_NAMES) REKA_PROGRAM_SUMS(SUM_NAMES)
                                     REKA_PROGRAM_OPERATIONS(OPERATION_NAME)};
#undef OPERATION_NAME
#undef SUM_NAMES
#undef TERM_NAMES

std::vector<ProgramCode> CodesOf(const CExpressionProgram& program) {
    std::vector<ProgramCode> codes;
    const std::span<const ProgramWord> words = program.Words();
    for (std::size_t i = 0; i < words.size(); i += 1 + OperandCountOf(words[i].Code())) {
        codes.push_back(words[i].Code());
    }
    return codes;
}

std::string Show(const CExpressionProgram& program) {
    std::string shown;
    for (const ProgramCode code : CodesOf(program)) {
        shown += (shown.empty() ? "" : " ") + std::string(codeNames[static_cast<std::size_t>(code)]);
    }
    return shown;
}

struct ProgramCase {
    const char16_t* text;
    const char* steps;
};

// Compounds are i to l.
const ProgramCase programCases[] = {
    {u"2*EXP(-8000/(R*T))*C(i)-SQRT(P)/X(i)", "RateTerm PushValue SquareRoot Divide SubtractPopped End"},
    {u"T", "Value End"},
    {u"2*T", "Product End"},
    {u"X(i)*P*T", "TripleProduct End"},
    {u"1/T", "Quotient End"},
    {u"A(i)^0.5", "Root End"},
    {u"A(i)*A(j)^0.5", "RootProduct End"},
    {u"2*T^2", "SquareProduct End"},
    {u"EXP(-5000/(R*T))", "Arrhenius End"},
    {u"2*EXP(-5000/(R*T))", "ScaledArrhenius End"},
    {u"EXP(-5000/(R*T))*2", "ScaledArrhenius End"},
    {u"2*EXP(-5000/(R*T))*A(i)", "RateTerm End"},
    {u"2*EXP(-5000/(R*T))*A(i)*A(j)", "LongRateTerm End"},
    {u"2*EXP(-5000/(R*T))*A(i)*A(j)*A(k)", "LongRateTerm Multiply End"},
    {u"2*EXP(-5000/(R*T))*A(i)^0.5", "RootRateTerm End"},
    {u"A(i)/(2*EXP(-5000/(R*T)))", "InverseRateTerm End"},
    {u"1+2*EXP(-5000/(R*T))*A(i)", "OffsetRateTerm End"},
    {u"(T-P)/(1+2*EXP(-5000/(R*T))*A(i)+3*EXP(-6000/(R*T))*A(j))",
     "Value SubtractValue PushOffsetRateTerm AddRateTerm DividePopped End"},
    {u"3*LOG10(T)", "LogarithmProduct End"},
    {u"LOG10(T)*3", "Value DecimalLogarithm Multiply End"},
    {u"1+2*T", "Sum End"},
    {u"1+2*T+3*P", "LongSum End"},
    {u"1+2*T+3*P+4*X(i)", "LongSum AddProduct End"},
    {u"1-2*T", "Sum End"},
    {u"1-T*2", "Value SubtractProduct End"},
    {u"T+P", "Value AddValue End"},
    {u"T-P", "Value SubtractValue End"},
    {u"T-2", "Value AddValue End"},
    {u"T+P+X(i)", "Value AddTwoProducts End"},
    {u"T+P+X(i)+2*X(j)+X(k)", "Value AddThreeProducts AddValue End"},
    {u"T+X(i)*T*P+2*X(j)", "Value AddUnequalProducts End"},
    {u"T+X(i)*T*P-2", "Value AddUnequalProducts End"},
    {u"T-X(i)*T*P", "Value SubtractTripleProduct End"},
    {u"T+1/P", "Value AddQuotient End"},
    {u"T-1/P", "Value SubtractQuotient End"},
    {u"1/P+SQRT(T)", "Value SquareRoot AddQuotient End"},
    {u"1/P-SQRT(T)", "Quotient PushValue SquareRoot SubtractPopped End"},
    {u"2-SQRT(T)", "Value SquareRoot SubtractFrom End"},
    {u"SQRT(T)*P", "Value SquareRoot Multiply End"},
    {u"SQRT(T)*P*2", "Value SquareRoot MultiplyTwice End"},
    {u"SQRT(T)/P", "Value SquareRoot Divide End"},
    {u"P/SQRT(T)", "Value SquareRoot DivideInto End"},
    {u"T^P", "Value Power End"},
    {u"T^SQRT(P)", "Value SquareRoot PowerOf End"},
    {u"10^T", "Value PowerOfTen End"},
    {u"1^T", "Value Power End"},
    {u"SQRT(T)+SQRT(P)", "Value SquareRoot PushValue SquareRoot AddPopped End"},
    {u"SQRT(T)*SQRT(P)", "Value SquareRoot PushValue SquareRoot MultiplyPopped End"},
    {u"SQRT(T)/SQRT(P)", "Value SquareRoot PushValue SquareRoot DividePopped End"},
    {u"SQRT(T)^SQRT(P)", "Value SquareRoot PushValue SquareRoot PowerPopped End"},
    {u"MIN(T,P)", "Value PushValue FunctionPopped End"},
    {u"SQRT(T)/SIN(P)^2", "Value SquareRoot PushValue Function DivideBySquare End"},
    {u"SQRT(T)/SIN(P)^3", "Value SquareRoot PushValue Function DivideByCube End"},
    {u"SQRT(T)/(1+2*P+3*T)^2", "Value SquareRoot DivideBySumSquare End"},
    {u"-T", "Value Negate End"},
    {u"T^2", "Value Square End"},
    {u"T^3", "Value Cube End"},
    {u"SIN(T)^0.5", "Value Function PowerOfHalf End"},
    {u"EXP(T)", "Value Exponential End"},
    {u"LOG(T)", "Value Logarithm End"},
    {u"LOG10(T)", "Value DecimalLogarithm End"},
    {u"ASIN(T)", "Value Function End"},
};

ExpressionTree ParseText(const ReactionPackDefinition& definition, std::u16string_view text) {
    std::u16string errorText;
    ExpressionTree tree = ParseExpression(definition, text, errorText, nullptr);
    EXPECT_TRUE(tree) << Utf8FromUtf16(text) << ": " << Utf8FromUtf16(errorText);
    return tree ? std::move(tree) : MakeConstant(0);
}

TEST(ExpressionProgram, IsTheseSteps) {
    const auto definition = MakeDefinitionOf({u"i", u"j", u"k", u"l"});
    for (const auto& [text, steps] : programCases) {
        const ExpressionTree tree = ParseText(*definition, text);
        EXPECT_EQ(Show(CExpressionProgram(*tree, SurveyTree(*tree))), steps) << Utf8FromUtf16(text);
    }
}

// A text for each use of a term, with the term in the place of the dollar sign.
const char16_t* const usesOfTerms[] = {u"$", u"SIN(T)+$", u"SIN(T)-$", u"SIN(T)*($-SIN(P))"};

std::u16string InPlaceOfDollar(std::u16string_view frame, std::u16string_view term) {
    const std::size_t place = frame.find(u'$');
    return std::u16string(frame.substr(0, place)) + u"(" + std::u16string(term) + u")" +
           std::u16string(frame.substr(place + 1));
}

/// The values of what is read, and those that guards, powers and limits turn on.
constexpr double telling[] = {0.0,
                              -0.0,
                              0.5,
                              1.0,
                              2.0,
                              3.0,
                              350.5,
                              -1.5,
                              1e200,
                              1e-300,
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};

/// Expects the same of the program and of the nodes for many values.
void ExpectSameValues(const ExpressionRef& expression, ReactionPackDefinition& definition, std::string_view name) {
    std::mt19937 random(17);
    const auto pick = [&] { return telling[static_cast<std::size_t>(RandomBelow(random, std::size(telling)))]; };
    for (int round = 0; round < 200; ++round) {
        definition.temperature = round % 3 == 0 ? pick() : 300 + RandomBelow(random, 900) / 7.0;
        definition.pressure = round % 5 == 0 ? pick() : 1e5 + RandomBelow(random, 900) / 7.0;
        for (std::size_t i = 0; i < definition.workArraySize; ++i) {
            for (double* values : {definition.molarity.Get(), definition.activity.Get(), definition.fugacity.Get(),
                                   definition.moleFraction.Get()}) {
                values[i] = random() % 8 == 0 ? pick() : RandomBelow(random, 1000) / 999.0;
            }
        }
        double byNodes = 0.0;
        double bySteps = 0.0;
        std::u16string errorOfNodes;
        std::u16string errorOfSteps;
        EvaluateExpression(*expression.root, byNodes, definition, errorOfNodes);
        EvaluateExpression(expression, bySteps, definition, errorOfSteps);
        ASSERT_EQ(errorOfNodes, errorOfSteps) << name;
        const bool areBothNotNumbers = byNodes != byNodes && bySteps != bySteps;
        ASSERT_TRUE(areBothNotNumbers || BitsOf(byNodes) == BitsOf(bySteps))
            << name << ": " << byNodes << " by nodes, " << bySteps << " by steps";
    }
}

TEST(ExpressionProgram, ComputesWhatTheNodesDo) {
    const auto definition = MakeDefinitionOf({u"i", u"j", u"k", u"l"});
    std::set<ProgramCode> metCodes;
    for (const auto& row : programCases) {
        for (const char16_t* frame : usesOfTerms) {
            const std::u16string text = InPlaceOfDollar(frame, row.text);
            const ExpressionRef expression(ParseText(*definition, text));
            for (const ProgramCode code : CodesOf(expression.program)) metCodes.insert(code);
            ExpectSameValues(expression, *definition, Utf8FromUtf16(text));
        }
    }
    for (int code = 0; code < static_cast<int>(ProgramCode::Count); ++code) {
        EXPECT_TRUE(metCodes.count(static_cast<ProgramCode>(code))) << codeNames[code] << " was met nowhere";
    }
}

TEST(ExpressionProgram, FindsItsOperandsAgain) {
    auto definition = MakeDefinitionOf({u"i", u"j"});
    const ExpressionRef expression(ParseText(*definition, u"X(j)*T"));
    const auto evaluate = [&](ReactionPackDefinition& used, double temperature) {
        used.temperature = temperature;
        if (used.workArraySize > 1) used.moleFraction[1] = 5.0;
        double value = 0.0;
        std::u16string errorText;
        return EvaluateExpression(expression, value, used, errorText) ? value : -1.0;
    };
    EXPECT_EQ(evaluate(*definition, 2.0), 10.0);
    const auto other = MakeDefinitionOf({u"i", u"j", u"k"});
    EXPECT_EQ(evaluate(*other, 3.0), 15.0);
    EXPECT_EQ(evaluate(*definition, 4.0), 20.0);
    definition->ReleaseWorkArrays();
    EXPECT_EQ(evaluate(*definition, 5.0), -1.0);
    definition->AllocateWorkArrays();
    EXPECT_EQ(evaluate(*definition, 6.0), 30.0);
    definition->compounds.pop_back();
    definition->AllocateWorkArrays();
    EXPECT_EQ(evaluate(*definition, 7.0), -1.0);
}

TEST(ExpressionProgram, TellsDefinitionsWithoutWorkArraysApart) {
    ReactionPackDefinition definition(nullptr);
    ReactionPackDefinition other(nullptr);
    const ExpressionRef expression(ParseText(definition, u"T*P"));
    for (int round = 0; round < 2; ++round) {
        definition.temperature = 2.0 + round;
        other.temperature = 200.0 + round;
        definition.pressure = other.pressure = 10.0;
        for (ReactionPackDefinition* used : {&definition, &other}) {
            double value = 0.0;
            std::u16string errorText;
            ASSERT_TRUE(EvaluateExpression(expression, value, *used, errorText));
            EXPECT_EQ(value, used->temperature * 10.0);
        }
    }
}

// Stored data may hold a signaling NaN, which traps where it is compared.
TEST(ExpressionProgram, IsMadeWhateverTheHostTrapsOn) {
    constexpr double signaling = std::numeric_limits<double>::signaling_NaN();
    const ExpressionTree trees[] = {
        MakeNode(NodeKind::Power, MakeConstant(signaling), MakeNode(NodeKind::Temperature)),
        MakeNode(NodeKind::Power, MakeNode(NodeKind::Temperature), MakeConstant(signaling)),
        MakeNode(NodeKind::Subtraction, MakeNode(NodeKind::Temperature), MakeConstant(signaling)),
    };
    const ArithmeticSettings before = CurrentArithmetic();
    ArithmeticSettings trapping = before;
    trapping.sse &= ~0x1FBFU;  // nothing is masked, nothing has happened
    for (const ExpressionTree& tree : trees) {
        SetArithmetic(trapping);
        const CExpressionProgram program(*tree, SurveyTree(*tree));
        const ArithmeticSettings after = CurrentArithmetic();
        SetArithmetic(before);
        EXPECT_TRUE(SameArithmetic(after, trapping));
        EXPECT_FALSE(program.Words().empty());
    }
}

TEST(ExpressionProgram, HasNoStepsForAMalformedTree) {
    const auto isEmpty = [](const ExpressionTree& tree) {
        return CExpressionProgram(*tree, SurveyTree(*tree)).Words().empty();
    };
    EXPECT_TRUE(isEmpty(MakeNode(NodeKind::Addition, ExpressionTree(), MakeConstant(1))));
    EXPECT_TRUE(isEmpty(MakeNode(NodeKind::Sqrt)));
    EXPECT_TRUE(isEmpty(MakeNode(NodeKind::Sqrt, MakeConstant(1), MakeConstant(2))));
    EXPECT_TRUE(isEmpty(MakeNode(NodeKind::Sqrt, MakeCompoundLeaf(NodeKind::Activity, -1))));
    EXPECT_TRUE(isEmpty(MakeCompoundLeaf(NodeKind::MolecularWeight, 0)));
    EXPECT_FALSE(isEmpty(MakeCompoundLeaf(NodeKind::Activity, (1 << 28) - 2)));
    EXPECT_TRUE(isEmpty(MakeCompoundLeaf(NodeKind::Activity, (1 << 28) - 1)));  // more than a word can number
    EXPECT_FALSE(isEmpty(MakeNode(NodeKind::Sqrt, MakeConstant(1))));
}

}  // namespace
}  // namespace reka::test
