// SPDX-License-Identifier: MIT
// Programs compute what the walks over their trees do, whatever steps they are made of.

#include "expression/tree/ExpressionProgram.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <span>
#include <vector>

#include "expression/ExpressionBuilders.h"
#include "expression/parse/ParseExpression.h"
#include "expression/run/EvaluateExpression.h"
#include "expression/tree/ProgramCode.h"
#include "platform/HostArithmetic.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

#define RULE_NAME(code, operation, left, right) #code,
const char* const codeNames[] = {REKA_PROGRAM_RULES(RULE_NAME) "Keep", "KeepAndFetch", "End"};
#undef RULE_NAME

std::vector<ProgramCode> CodesOf(const CExpressionProgram& program) {
    std::vector<ProgramCode> codes;
    const std::span<const ProgramWord> words = program.Words();
    for (std::size_t i = 0; i < words.size(); i += 1 + OperandCountOf(words[i].Code())) {
        codes.push_back(words[i].Code());
    }
    return codes;
}

// Compounds are i to l.
const char16_t* const texts[] = {
    u"2*EXP(-8000/(R*T))*C(i)-SQRT(P)/X(i)",
    u"T",
    u"2*T",
    u"X(i)*P*T",
    u"1/T",
    u"A(i)^0.5",
    u"A(i)*A(j)^0.5",
    u"2*T^2",
    u"EXP(-5000/(R*T))",
    u"2*EXP(-5000/(R*T))",
    u"EXP(-5000/(R*T))*2",
    u"2*EXP(-5000/(R*T))*A(i)",
    u"2*EXP(-5000/(R*T))*A(i)*A(j)",
    u"2*EXP(-5000/(R*T))*A(i)*A(j)*A(k)",
    u"2*EXP(-5000/(R*T))*A(i)^0.5",
    u"A(i)/(2*EXP(-5000/(R*T)))",
    u"1+2*EXP(-5000/(R*T))*A(i)",
    u"(T-P)/(1+2*EXP(-5000/(R*T))*A(i)+3*EXP(-6000/(R*T))*A(j))",
    u"3*LOG10(T)",
    u"LOG10(T)*3",
    u"1+2*T",
    u"1+2*T+3*P",
    u"1+2*T+3*P+4*X(i)",
    u"1-2*T",
    u"1-T*2",
    u"T+P",
    u"T-P",
    u"T-2",
    u"T+P+X(i)",
    u"T+P+X(i)+2*X(j)+X(k)",
    u"T+X(i)*T*P+2*X(j)",
    u"T+X(i)*T*P-2",
    u"T-X(i)*T*P",
    u"T+1/P",
    u"T-1/P",
    u"1/P+SQRT(T)",
    u"1/P-SQRT(T)",
    u"2-SQRT(T)",
    u"SQRT(T)*P",
    u"SQRT(T)*P*2",
    u"SQRT(T)/P",
    u"P/SQRT(T)",
    u"T^P",
    u"T^SQRT(P)",
    u"10^T",
    u"1^T",
    u"SQRT(T)+SQRT(P)",
    u"SQRT(T)*SQRT(P)",
    u"SQRT(T)/SQRT(P)",
    u"SQRT(T)^SQRT(P)",
    u"MIN(T,P)",
    u"SQRT(T)/SIN(P)^2",
    u"SQRT(T)/SIN(P)^3",
    u"SQRT(T)/(1+2*P+3*T)^2",
    u"-T",
    u"T^2",
    u"T^3",
    u"SIN(T)^0.5",
    u"EXP(T)",
    u"LOG(T)",
    u"LOG10(T)",
    u"ASIN(T)",
    u"1/(T*P)",
    u"2*T/P",
    u"EXP(2-500/T)",
    u"SIN(T)+2*P+3*T",
    u"SIN(T)*(2*EXP(-500/T))",
    u"SIN(T)^2",
    u"SIN(T)^(-2)",
    u"T^4-1/X(i)",
    u"X(i)^(-1)",
    u"X(i)^(-2)+A(i)^(-3)",
    u"T^(-4)",
    u"X(j)^1.5",
    u"A(j)^2.5*P",
    u"A(i)^(-0.5)",
    u"X(i)^0",
    u"X(i)^1",
    u"T^1.7",
    u"SIN(T)^4+SIN(T)^1.5",
    u"EXP(-500/T)",
    u"2*EXP(-500/T)",
    u"2*EXP(-500/T)*X(i)",
    u"SIN(T)+2*EXP(-500/T)*X(i)",
    u"SIN(T)*(T/P)",
    u"A(i)^0.5*3",
    u"2/SIN(T)^2",
    u"T*X(i)-A(i)*A(j)",
    u"T*X(i)-2*A(i)*A(j)",
    u"SIN(T)-2*X(i)*EXP(-500/T)/A(j)",
    u"SIN(T)+2*P^2",
    u"MAX(SIN(T),COS(T))",
    u"MOD(T,3)+MOD(3,T)",
    u"MIN(3,SIN(T))",
    u"MIN(SIN(T),3)",
    u"SIN(T)/COS(T)",
    u"COS(T)^SIN(T)",
    u"-SIN(T)-T",
    u"SIN(T)+SIN(T)*SIN(T)",
    u"SQRT(P)/(1+SQRT(P))",
    u"(T/1000)^2+(T/1000)^3+(T/1000)^4-1/(T/1000)",
    u"EXP(-900/(R*T))*X(i)/(1+EXP(-900/(R*T))*X(i))^2",
    u"LOG(X(i)*X(j))+LOG(X(j)*X(i))",
    u"(X(i)-X(j))/(X(j)-X(i))",
    u"1/(T-P)+2/(T-P)+3/(T-P)",
    u"(T+P)/(P+T)+SQRT(T+P)",
    u"LOG(X(i))-2*LOG(X(i))-A(i)/LOG(X(i))",
    u"1/X(i)/(1/X(i))",
    u"X(i)/P*(X(j)/P)/(1+X(i)/P+X(j)/P)",
    u"MIN(SIN(T),SIN(P))+MIN(SIN(P),SIN(T))",
};

ExpressionTree ParseText(const ReactionPackDefinition& definition, std::u16string_view text) {
    std::u16string errorText;
    ExpressionTree tree = ParseExpression(definition, text, errorText, nullptr);
    EXPECT_TRUE(tree) << Utf8FromUtf16(text) << ": " << Utf8FromUtf16(errorText);
    return tree ? std::move(tree) : MakeConstant(0);
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
    for (const char16_t* const whole : texts) {
        for (const char16_t* frame : usesOfTerms) {
            const std::u16string text = InPlaceOfDollar(frame, whole);
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
