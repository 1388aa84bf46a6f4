// SPDX-License-Identifier: MIT
// What repeats in a tree is computed once, whatever the tree, in room that grows as the tree does.

#include "expression/tree/ProgramValues.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "expression/ExpressionBuilders.h"
#include "expression/parse/ParseExpression.h"
#include "expression/run/EvaluateExpression.h"
#include "expression/tree/ExpressionProgram.h"
#include "support/AllocationCounter.h"
#include "support/SmallStack.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

/// Expects the same value, or the same reason, of the nodes and of the program.
void ExpectSameBothWays(const ExpressionRef& expression, const ReactionPackDefinition& definition) {
    double byNodes = 0.0;
    double bySteps = 0.0;
    std::u16string errorOfNodes;
    std::u16string errorOfSteps;
    EvaluateExpression(*expression.root, byNodes, definition, errorOfNodes);
    EvaluateExpression(expression, bySteps, definition, errorOfSteps);
    ASSERT_EQ(errorOfNodes, errorOfSteps);
    const bool areBothNotNumbers = byNodes != byNodes && bySteps != bySteps;
    ASSERT_TRUE(areBothNotNumbers || BitsOf(byNodes) == BitsOf(bySteps)) << byNodes << " and " << bySteps;
}

constexpr NodeKind operators[] = {
    NodeKind::Addition, NodeKind::Addition,       NodeKind::Subtraction, NodeKind::Multiplication,
    NodeKind::Division, NodeKind::Multiplication, NodeKind::Min};
constexpr double exponents[] = {-4, -3, -2, -1, 0, 1, 2, 3, 4, -0.5, 0.5, 1.5, 2.5, 1.7, 10};

/// A tree over few parts, which therefore repeat in it.
ExpressionTree MakeRepeatingTree(std::mt19937& random, const std::vector<ExpressionTree>& parts, int levels) {
    const auto partCount = static_cast<unsigned>(parts.size());
    if (levels == 0) return Clone(parts[static_cast<std::size_t>(RandomBelow(random, partCount))]);
    ExpressionTree left = MakeRepeatingTree(random, parts, levels - 1);
    const int choice = RandomBelow(random, 10);
    if (choice == 0) return MakeNode(NodeKind::Power, left, MakeConstant(exponents[RandomBelow(random, 15)]));
    if (choice == 1) return MakeNode(NodeKind::Power, MakeConstant(10), left);
    if (choice == 2) return MakeNode(NodeKind::Exp, left);
    return MakeNode(operators[RandomBelow(random, 7)], left, MakeRepeatingTree(random, parts, levels - 1));
}

TEST(ProgramValues, OfRepeatingTreesComputeWhatTheNodesDo) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto definition = MakeDefinitionOf({u"a", u"b", u"c"});
    std::mt19937 random(29);
    int valueCount = 0;
    for (int round = 0; round < 4000; ++round) {
        definition->temperature = round % 9 == 0 ? 10.0 : 1.0 + RandomBelow(random, 900) / 7.0;
        definition->pressure = RandomBelow(random, 1000) / 100.0;
        for (std::size_t i = 0; i < 3; ++i) {
            definition->molarity[i] = RandomBelow(random, 100) / 10.0;
            definition->activity[i] = random() % 16 == 0 ? infinity : RandomBelow(random, 100) / 50.0;
            definition->fugacity[i] = random() % 16 == 0 ? -0.0 : RandomBelow(random, 100000);
            definition->moleFraction[i] = random() % 16 == 0 ? 1e-320 : RandomBelow(random, 101) / 100.0;
        }
        std::vector<ExpressionTree> parts;
        for (int i = 0; i < 3; ++i) parts.push_back(MakeRandomTree(random, RandomBelow(random, 3), false));
        parts.push_back(MakeConstant(RandomBelow(random, 9) - 4));
        const ExpressionRef expression(MakeRepeatingTree(random, parts, 1 + RandomBelow(random, 6)));
        ASSERT_FALSE(expression.program.Words().empty());
        ExpectSameBothWays(expression, *definition);
        double value = 0.0;
        valueCount += RunProgram(expression.program, value, *definition) && std::isfinite(value);
    }
    EXPECT_GT(valueCount, 500);  // the trees are not all failures
}

std::size_t WordCountOf(const std::u16string& text) {
    const auto definition = MakeDefinitionOf({u"i", u"j"});
    std::u16string errorText;
    const ExpressionRef expression(ParseExpression(*definition, text, errorText, nullptr));
    return expression.program.Words().size();
}

TEST(ProgramValues, AreComputedOnceEach) {
    const std::u16string part = u"SIN(COS(T*P)+EXP(-500/T)*X(i)*LOG(A(j)))";
    const std::size_t one = WordCountOf(part);
    for (const char16_t* const next : {u"+2*", u"-", u"*", u"/", u"+A(i)*"}) {
        std::u16string text = part;
        for (int i = 0; i < 50; ++i) text += next + part;
        EXPECT_LT(WordCountOf(text), one + 60 * 8) << Utf8FromUtf16(next);
    }
}

TEST(ProgramValues, AreTheSameWithPartsInEitherOrder) {
    const auto countOf = [](const char16_t* text) { return WordCountOf(text); };
    EXPECT_EQ(countOf(u"SIN(T*P)/SQRT(SIN(P*T))"), countOf(u"SIN(T*P)/SQRT(SIN(T*P))"));
    EXPECT_EQ(countOf(u"SIN(T+P)/SQRT(SIN(P+T))"), countOf(u"SIN(T+P)/SQRT(SIN(T+P))"));
    EXPECT_GT(countOf(u"SIN(T-P)/SQRT(SIN(P-T))"), countOf(u"SIN(T-P)/SQRT(SIN(T-P))"));
    EXPECT_GT(countOf(u"SIN(T/P)/SQRT(SIN(P/T))"), countOf(u"SIN(T/P)/SQRT(SIN(T/P))"));
}

/// A sum of `count` terms, the i-th of which `makeTerm` makes in the arena.
template <class MakeTerm>
ExpressionTree MakeSum(std::size_t count, MakeTerm makeTerm) {
    ExpressionArena arena = MakeArena(5 * count);
    ExpressionNode* sum = makeTerm(*arena, std::size_t{0});
    for (std::size_t i = 1; i < count; ++i) {
        ExpressionNode& longer = MakeNode(*arena, i % 2 == 0 ? NodeKind::Addition : NodeKind::Subtraction);
        AddArgument(*arena, longer, sum);
        AddArgument(*arena, longer, makeTerm(*arena, i));
        sum = &longer;
    }
    return MakeTree(std::move(arena), *sum);
}

ExpressionNode* MakeTermOf(ArenaResource& arena, NodeKind function, double factor) {
    ExpressionNode& product = MakeNode(arena, NodeKind::Multiplication);
    ExpressionNode& constant = MakeNode(arena, NodeKind::RealConstant);
    constant.value = factor;
    AddArgument(arena, product, &constant);
    AddArgument(arena, product, &MakeNode(arena, NodeKind::Temperature));
    ExpressionNode& term = MakeNode(arena, function);
    AddArgument(arena, term, &product);
    return &term;
}

/// Makes the program of a great tree on a small stack, in room that is in proportion to it, and runs it.
void ExpectProportion(const ExpressionTree& tree, std::size_t nodeCount) {
    const auto definition = MakeDefinitionOf({});
    definition->temperature = 0.5;
    const CAllocationCounter allocations;
    const TreeSurvey survey = SurveyTree(*tree);
    ASSERT_EQ(survey.nodeCount, nodeCount);
    CExpressionProgram program(*tree, survey);
    EXPECT_LT(allocations.Bytes(), 300 * nodeCount);
    const CAllocationCounter runAllocations;
    double bySteps = 0.0;
    ASSERT_TRUE(RunProgram(program, bySteps, *definition));
    EXPECT_EQ(runAllocations.Count(), 0U);
    double byNodes = 0.0;
    std::u16string errorText;
    ASSERT_TRUE(EvaluateExpression(*tree, byNodes, *definition, errorText));
    EXPECT_EQ(BitsOf(byNodes), BitsOf(bySteps));
}

constexpr std::size_t great = 200'000;

TEST(ProgramValues, OfEqualTermsTakeRoomInProportion) {
    RunOnSmallStack([] {
        const auto makeTerm = [](ArenaResource& arena, std::size_t) { return MakeTermOf(arena, NodeKind::Exp, 1.5); };
        ExpectProportion(MakeSum(great, makeTerm), 5 * great - 1);
    });
}

TEST(ProgramValues, OfDifferentTermsTakeRoomInProportion) {
    RunOnSmallStack([] {
        const auto makeTerm = [](ArenaResource& arena, std::size_t i) {
            return MakeTermOf(arena, NodeKind::Cos, static_cast<double>(i));
        };
        ExpectProportion(MakeSum(great, makeTerm), 5 * great - 1);
    });
}

TEST(ProgramValues, OfDeepTreesTakeRoomInProportion) {
    RunOnSmallStack([] {
        ExpectProportion(MakeDeepTree(DeepShape::RightDeep, 1'000'000, NodeKind::Temperature), 2'000'001);
        ExpectProportion(MakeDeepTree(DeepShape::LeftDeep, 1'000'000, NodeKind::Temperature), 2'000'001);
        ExpectProportion(MakeDeepTree(DeepShape::Chain, 1'000'000, NodeKind::Temperature), 1'000'001);
    });
}

// Each level has the level below twice: half a million nodes, and twenty values.
TEST(ProgramValues, OfDoublingTreesAreFew) {
    RunOnSmallStack([] {
        ExpressionArena arena = MakeArena(1 << 19);
        std::vector<ExpressionNode*> level;
        for (int i = 0; i < 1 << 18; ++i) level.push_back(&MakeNode(*arena, NodeKind::Temperature));
        while (level.size() > 1) {
            std::vector<ExpressionNode*> above;
            for (std::size_t i = 0; i < level.size(); i += 2) {
                above.push_back(&MakeNode(*arena, NodeKind::Multiplication));
                AddArgument(*arena, *above.back(), level[i]);
                AddArgument(*arena, *above.back(), level[i + 1]);
            }
            level = above;
        }
        const ExpressionTree tree = MakeTree(std::move(arena), *level[0]);
        const TreeSurvey survey = SurveyTree(*tree);
        EXPECT_LT(CExpressionProgram(*tree, survey).Words().size(), 100U);
        ExpectProportion(tree, (1 << 19) - 1);
    });
}

}  // namespace
}  // namespace reka::test
