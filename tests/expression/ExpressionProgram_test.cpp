// The steps of a tree, and the stack of the walks that make them.

#include "expression/ExpressionProgram.h"

#include <gtest/gtest.h>

#include "expression/ExpressionBuilders.h"
#include "expression/WalkStack.h"

namespace reka::test {
namespace {

// The kinds of the steps in their order.
std::vector<int> KindsOf(const CExpressionProgram& program) {
    std::vector<int> kinds;
    for (const ExpressionStep& step : program.Steps()) kinds.push_back(static_cast<int>(step.kind));
    return kinds;
}

TEST(ExpressionProgram, PutsArgumentsBeforeTheirParent) {
    const ExpressionTree tree = MakeNode(NodeKind::Addition, MakeNode(NodeKind::Sqrt, MakeNode(NodeKind::Temperature)),
                                         MakeNode(NodeKind::Power, MakeNode(NodeKind::Pressure), MakeConstant(2)));
    EXPECT_EQ(KindsOf(CExpressionProgram(*tree)), (std::vector<int>{29, 8, 28, 0, 6, 1}));
}

TEST(ExpressionProgram, MarksWhatCannotBeComputed) {
    const ExpressionTree tree = MakeNode(NodeKind::Addition, ExpressionTree(), MakeNode(NodeKind::Sqrt));
    EXPECT_EQ(KindsOf(CExpressionProgram(*tree)), (std::vector<int>{-1, -1, 1}));
}

TEST(ExpressionProgram, BringsAStackForDeepTreesOnly) {
    const auto hasStack = [](DeepShape shape, int levels) {
        return CExpressionProgram(*MakeDeepTree(shape, levels, NodeKind::Temperature)).ValueStack() != nullptr;
    };
    const int greatest = static_cast<int>(localValueCount) - 1;
    EXPECT_FALSE(hasStack(DeepShape::LeftDeep, 1000));
    EXPECT_FALSE(hasStack(DeepShape::Chain, 1000));
    EXPECT_FALSE(hasStack(DeepShape::RightDeep, greatest));
    EXPECT_TRUE(hasStack(DeepShape::RightDeep, greatest + 1));
}

TEST(StepOf, TakesTheSlotOfItsKindAlone) {
    EXPECT_EQ(StepOf(*MakeConstant(2.5)).value, 2.5);
    EXPECT_EQ(StepOf(*MakeCompoundLeaf(NodeKind::Activity, 3)).compoundIndex, 3);
    EXPECT_EQ(StepOf(*MakeNode(NodeKind::Temperature)).kind, NodeKind::Temperature);
}

TEST(WalkStack, GivesBackWhatWasPushedLast) {
    CWalkStack<int, 4> stack;
    EXPECT_TRUE(stack.IsEmpty());
    for (int i = 0; i < 10; ++i) stack.Push(i);
    stack.Top() = 90;
    for (const int expected : {90, 8, 7, 6, 5, 4, 3, 2, 1, 0}) {
        EXPECT_EQ(stack.Top(), expected);
        stack.Pop();
    }
    EXPECT_TRUE(stack.IsEmpty());
    stack.Push(11);
    EXPECT_EQ(stack.Top(), 11);
}

}  // namespace
}  // namespace reka::test
