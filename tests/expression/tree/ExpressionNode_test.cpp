// SPDX-License-Identifier: MIT
// Trees as records: making, copying, destroying, and the owner of a finished one.

#include "expression/tree/ExpressionNode.h"

#include <gtest/gtest.h>

#include <bit>

#include "expression/ExpressionBuilders.h"
#include "support/AllocationCounter.h"
#include "support/SmallStack.h"

namespace reka::test {
namespace {

TEST(ExpressionNode, StartsWithoutArguments) {
    const ExpressionNode node{};
    EXPECT_EQ(node.kind, NodeKind::Failed);
    EXPECT_EQ(node.argumentCount, 0);
    EXPECT_EQ(node.arguments, nullptr);
}

TEST(AddArgument, KeepsManyArgumentsInOrder) {
    ExpressionTree list = MakeNode(NodeKind::ExpressionList);
    for (int i = 0; i < 1000; ++i) AppendCopy(list, MakeConstant(i));
    ASSERT_EQ(list->argumentCount, 1000);
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(list->arguments[i]->value, i);
}

TEST(AddArgument, GoesOnBehindAllocatedSlots) {
    ExpressionTree list = MakeNode(NodeKind::ExpressionList);
    AllocateArguments(*list.get_deleter().arena, *list, 3);
    EXPECT_EQ(Show(list.get()), "7(null,null,null)");
    AppendCopy(list, MakeConstant(1));
    AppendCopy(list, MakeConstant(2));
    EXPECT_EQ(Show(list.get()), "7(null,null,null,1,2)");
}

TEST(AddArgument, TakesMemoryInProportionToTheArguments) {
    const CAllocationCounter allocations;
    const ExpressionArena arena = MakeArena(1);
    ExpressionNode& list = MakeNode(*arena, NodeKind::ExpressionList);
    for (int i = 0; i < 100'000; ++i) AddArgument(*arena, list, nullptr);
    EXPECT_LT(allocations.Bytes(), 8 * 100'000 * sizeof(ExpressionNode*));
}

TEST(AddArgument, LosesNothingWithoutMemory) {
    const CAllocationCounter allocations;
    {
        ExpressionArena arena = MakeArena(4);
        ExpressionNode& list = MakeNode(*arena, NodeKind::ExpressionList);
        for (const double value : {1.0, 2.0}) {
            ExpressionNode& constant = MakeNode(*arena, NodeKind::RealConstant);
            constant.value = value;
            AddArgument(*arena, list, &constant);
        }
        ExpressionNode& third = MakeNode(*arena, NodeKind::Pressure);
        FailAllocation(1);  // of the room for a third argument, which the node hasn't by itself
        EXPECT_THROW(AddArgument(*arena, list, &third), std::bad_alloc);
        EXPECT_EQ(Show(&list), "7(1,2)");
        AddArgument(*arena, list, &third);
        EXPECT_EQ(Show(&list), "7(1,2,28)");
    }
    EXPECT_EQ(allocations.Left(), 0);
}

TEST(AllocateArguments, LeavesANodeWithNoneAsItWas) {
    const ExpressionTree node = MakeNode(NodeKind::Addition);
    AllocateArguments(*node.get_deleter().arena, *node, 0);
    EXPECT_EQ(node->argumentCount, 0);
    EXPECT_EQ(node->arguments, nullptr);
}

struct CloneCase {
    const char* name;
    ExpressionTree (*makeTree)();
    const char* copy;
};

const CloneCase cloneCases[] = {
    {"Constant", [] { return MakeConstant(8.314); }, "8.314"},
    {"CompoundLeaf", [] { return MakeCompoundLeaf(NodeKind::Fugacity, 5); }, "34:5"},
    {"MolecularWeight", [] { return MakeCompoundLeaf(NodeKind::MolecularWeight, 2); }, "32:2"},
    {"Temperature", [] { return MakeNode(NodeKind::Temperature); }, "29"},
    {"Operation", [] { return MakeNode(NodeKind::Subtraction, MakeConstant(1), MakeConstant(2)); }, "2(1,2)"},
    {"Failed", [] { return MakeNode(NodeKind::Failed, MakeConstant(1)); }, "-1(1)"},
    {"List", [] { return MakeNode(NodeKind::ExpressionList, MakeConstant(1), MakeConstant(2), MakeConstant(3)); },
     "7(1,2,3)"},
    {"EmptySlot", [] { return MakeNode(NodeKind::Addition, ExpressionTree(), MakeConstant(2)); }, "1(null,2)"},
    {"ConstantWithoutWhatHangsOnIt",
     [] {
         ExpressionTree constant = MakeConstant(3);
         AppendCopy(constant, MakeConstant(4));
         return constant;
     },
     "3"},
};

class CloneExpressions : public testing::TestWithParam<CloneCase> {};

TEST_P(CloneExpressions, OutliveTheirSource) {
    ExpressionTree source = GetParam().makeTree();
    const ExpressionTree copy = Clone(source);
    source.reset();
    EXPECT_EQ(Show(copy.get()), GetParam().copy);
}
INSTANTIATE_TEST_SUITE_P(Table, CloneExpressions, testing::ValuesIn(cloneCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CloneExpression, KeepsTheBitsOfAConstant) {
    const ExpressionTree source = MakeConstant(std::bit_cast<double>(0xFFF8000000001234));
    EXPECT_EQ(BitsOf(Clone(source)->value), 0xFFF8000000001234);
}

TEST(CloneExpression, LosesNothingWithoutMemory) {
    ExpressionTree source = MakeDeepTree(DeepShape::RightDeep, 100, NodeKind::Pressure);
    for (int i = 0; i < 5; ++i) AppendCopy(source, MakeConstant(i));  // which no longer lie in the node
    for (std::size_t n = 1;; ++n) {
        const CAllocationCounter allocations;
        FailAllocation(n);
        try {
            Clone(source);
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(allocations.Left(), 0);
            continue;
        }
        FailAllocation(0);
        EXPECT_GT(n, 2u);  // the nodes, and the list of the first one's arguments
        break;
    }
}

TEST(CloneExpression, TakesOneAllocation) {
    const ExpressionTree source = MakeDeepTree(DeepShape::LeftDeep, 20, NodeKind::Pressure);
    const CAllocationCounter allocations;
    const ExpressionTree copy = CloneExpression(*source, 41);
    EXPECT_EQ(allocations.Count(), 1U);
    EXPECT_EQ(Show(copy.get()), Show(source.get()));
}

TEST(TreeSurvey, CountsNodesAndConstants) {
    const ExpressionTree tree =
        MakeNode(NodeKind::Addition, MakeConstant(1), MakeNode(NodeKind::Exp, MakeNode(NodeKind::Temperature)));
    const TreeSurvey survey = SurveyTree(*tree);
    EXPECT_TRUE(survey.isSound);
    EXPECT_EQ(survey.nodeCount, 4U);
    EXPECT_EQ(survey.constantCount, 1U);
    EXPECT_EQ(survey.dependencies, dependency::temperature);
}

TEST(TreeSurvey, CountsWhatHangsOnALeaf) {
    const ExpressionTree tree = MakeNode(NodeKind::Pressure, MakeConstant(1), MakeConstant(2));
    const TreeSurvey survey = SurveyTree(*tree);
    EXPECT_FALSE(survey.isSound);
    EXPECT_EQ(survey.nodeCount, 3U);
    EXPECT_EQ(survey.constantCount, 2U);
}

struct DependencyCase {
    const char* name;
    ExpressionTree (*makeTree)();
    std::uint32_t dependencies;
};

const DependencyCase dependencyCases[] = {
    {"MoleFraction", [] { return MakeCompoundLeaf(NodeKind::MoleFraction, 0); }, 1},
    {"Molarity", [] { return MakeCompoundLeaf(NodeKind::Molarity, 0); }, 2},
    {"Activity", [] { return MakeCompoundLeaf(NodeKind::Activity, 0); }, 4},
    {"Temperature", [] { return MakeNode(NodeKind::Temperature); }, 8},
    {"Pressure", [] { return MakeNode(NodeKind::Pressure); }, 16},
    {"Fugacity", [] { return MakeCompoundLeaf(NodeKind::Fugacity, 0); }, 32},
    {"MolecularWeight", [] { return MakeCompoundLeaf(NodeKind::MolecularWeight, 0); }, 0},
    {"Constant", [] { return MakeConstant(1); }, 0},
    {"Joined",
     [] {
         return MakeNode(NodeKind::Addition, MakeNode(NodeKind::Sqrt, MakeNode(NodeKind::Pressure)),
                         MakeNode(NodeKind::Power, MakeCompoundLeaf(NodeKind::Fugacity, 1), MakeConstant(2)));
     },
     48},
    {"EmptySlot", [] { return MakeNode(NodeKind::Addition, ExpressionTree(), MakeNode(NodeKind::Temperature)); }, 8},
    {"NothingBelowALeaf", [] { return MakeNode(NodeKind::Pressure, MakeNode(NodeKind::Temperature)); }, 16},
    {"NothingFarBelowALeaf",
     [] { return MakeNode(NodeKind::Pressure, MakeNode(NodeKind::Abs, MakeNode(NodeKind::Temperature))); }, 16},
};

class Dependencies : public testing::TestWithParam<DependencyCase> {};

TEST_P(Dependencies, TellWhatTheTreeReads) {
    EXPECT_EQ(ExpressionRef(GetParam().makeTree()).dependencies, GetParam().dependencies);
}
INSTANTIATE_TEST_SUITE_P(Table, Dependencies, testing::ValuesIn(dependencyCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CollectDependencies, AddsToTheMask) {
    ExpressionRef expression(MakeNode(NodeKind::Temperature));
    CollectDependencies(*MakeNode(NodeKind::Pressure), expression);
    EXPECT_EQ(expression.dependencies, dependency::temperature | dependency::pressure);
}

TEST(ExpressionRef, ClonesItsMaskAsItStands) {
    auto expression = std::make_unique<ExpressionRef>(MakeNode(NodeKind::Negation, MakeNode(NodeKind::Temperature)));
    expression->dependencies = 3;
    const std::unique_ptr<ExpressionRef> copy = expression->Clone();
    expression.reset();
    EXPECT_EQ(copy->dependencies, 3u);
    EXPECT_EQ(Show(copy->root.get()), "5(29)");
}

TEST(ExpressionRef, FreesMalformedTreesToo) {
    const CAllocationCounter allocations;
    {
        const ExpressionTree wide = MakeNode(NodeKind::Max, MakeConstant(1), MakeConstant(2), MakeConstant(3));
        const ExpressionRef unsound(Clone(wide));
        EXPECT_FALSE(unsound.survey.isSound);
    }
    EXPECT_EQ(allocations.Left(), 0);
}

TEST(ExpressionRef, LosesNothingWithoutMemory) {
    const ExpressionTree source = MakeDeepTree(DeepShape::RightDeep, 100, NodeKind::Pressure);
    for (std::size_t n = 1;; ++n) {
        ExpressionTree tree = Clone(source);
        const CAllocationCounter allocations;
        FailAllocation(n);
        bool isMade = false;
        try {
            ExpressionRef expression(std::move(tree));
            isMade = true;
        } catch (const std::bad_alloc&) {
        }
        EXPECT_LT(allocations.Left(), 0);  // the tree itself is gone in either case
        if (isMade) break;
    }
    FailAllocation(0);
}

class DeepTrees : public testing::TestWithParam<DeepShape> {};

TEST_P(DeepTrees, AreCopiedCollectedAndDestroyedOnASmallStack) {
    RunOnSmallStack([] {
        const CAllocationCounter allocations;
        {
            const ExpressionTree tree = MakeDeepTree(GetParam(), 1'000'000, NodeKind::Temperature);
            const ExpressionRef copy(Clone(tree));
            EXPECT_EQ(copy.dependencies, dependency::temperature);
        }
        EXPECT_EQ(allocations.Left(), 0);
    });
}

TEST_P(DeepTrees, AreDestroyedWithoutAllocation) {
    ExpressionTree tree = MakeDeepTree(GetParam(), 100'000, NodeKind::Temperature);
    const CAllocationCounter allocations;
    tree.reset();
    EXPECT_EQ(allocations.Count(), 0u);
}
INSTANTIATE_TEST_SUITE_P(Shapes, DeepTrees,
                         testing::Values(DeepShape::LeftDeep, DeepShape::RightDeep, DeepShape::Chain));

}  // namespace
}  // namespace reka::test
