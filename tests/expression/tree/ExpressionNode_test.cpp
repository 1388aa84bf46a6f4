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
    const ExpressionTree node(new ExpressionNode);
    EXPECT_EQ(node->kind, NodeKind::Failed);
    EXPECT_EQ(node->argumentCount, 0);
    EXPECT_EQ(node->arguments, nullptr);
}

TEST(AddArgument, KeepsManyArgumentsInOrder) {
    const ExpressionTree list = MakeNode(NodeKind::ExpressionList);
    for (int i = 0; i < 1000; ++i) AddArgument(*list, MakeConstant(i));
    ASSERT_EQ(list->argumentCount, 1000);
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(list->arguments[i]->value, i);
}

TEST(AddArgument, GoesOnBehindAllocatedSlots) {
    const ExpressionTree list = MakeNode(NodeKind::ExpressionList);
    AllocateArguments(*list, 3);
    EXPECT_EQ(Show(list.get()), "7(null,null,null)");
    AddArgument(*list, MakeConstant(1));
    AddArgument(*list, MakeConstant(2));
    EXPECT_EQ(Show(list.get()), "7(null,null,null,1,2)");
}

TEST(AddArgument, LosesNothingWithoutMemory) {
    const ExpressionTree list = MakeNode(NodeKind::ExpressionList, MakeConstant(1), MakeConstant(2));
    const CAllocationCounter allocations;
    {
        ExpressionTree argument = MakeConstant(3);  // of which the node has no room by itself
        FailAllocation(1);
        EXPECT_THROW(AddArgument(*list, std::move(argument)), std::bad_alloc);
    }
    EXPECT_EQ(allocations.Left(), 0);
    EXPECT_EQ(Show(list.get()), "7(1,2)");
}

TEST(MoveArguments, TakesAnyNumber) {
    for (int count = 0; count < 6; ++count) {
        const ExpressionTree source = MakeNode(NodeKind::ExpressionList);
        for (int i = 0; i < count; ++i) AddArgument(*source, MakeConstant(i));
        const ExpressionTree node = MakeNode(NodeKind::ExpressionList);
        const std::string shown = Show(source.get());
        MoveArguments(*node, *source);
        EXPECT_EQ(Show(node.get()), shown);
        EXPECT_EQ(source->argumentCount, 0);
        AddArgument(*node, MakeConstant(8));  // what was taken is the node's own
        AddArgument(*source, MakeConstant(9));
        EXPECT_EQ(node->argumentCount, count + 1);
        EXPECT_EQ(Show(source.get()), "7(9)");
    }
}

TEST(ClearArguments, LeavesANodeThatCanTakeNewOnes) {
    for (const int count : {0, 1, 2, 3, 9}) {
        const CAllocationCounter allocations;
        ExpressionTree node = MakeNode(NodeKind::ExpressionList);
        for (int i = 0; i < count; ++i) AddArgument(*node, MakeConstant(i));
        ClearArguments(*node);
        EXPECT_EQ(node->argumentCount, 0);
        EXPECT_EQ(node->arguments, nullptr);
        AddArgument(*node, MakeConstant(5));
        EXPECT_EQ(Show(node.get()), "7(5)");
        node.reset();
        EXPECT_EQ(allocations.Left(), 0);
    }
}

TEST(AllocateArguments, LeavesANodeWithNoneAsItWas) {
    const ExpressionTree node = MakeNode(NodeKind::Addition);
    AllocateArguments(*node, 0);
    EXPECT_EQ(node->argumentCount, 0);
    EXPECT_EQ(node->arguments, nullptr);
}

TEST(DestroyExpression, PassesOverNothing) {
    DestroyExpression(nullptr);
    const CAllocationCounter allocations;
    ExpressionTree tree = MakeNode(NodeKind::Addition, MakeConstant(1), ExpressionTree(),
                                   MakeNode(NodeKind::Negation, MakeCompoundLeaf(NodeKind::Molarity, 7)));
    tree.reset();
    EXPECT_EQ(allocations.Left(), 0);
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
         AddArgument(*constant, MakeConstant(4));
         return constant;
     },
     "3"},
};

class CloneExpressions : public testing::TestWithParam<CloneCase> {};

TEST_P(CloneExpressions, OutliveTheirSource) {
    ExpressionTree source = GetParam().makeTree();
    const ExpressionTree copy = CloneExpression(*source);
    source.reset();
    EXPECT_EQ(Show(copy.get()), GetParam().copy);
}
INSTANTIATE_TEST_SUITE_P(Table, CloneExpressions, testing::ValuesIn(cloneCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CloneExpression, KeepsTheBitsOfAConstant) {
    const ExpressionTree source = MakeConstant(std::bit_cast<double>(0xFFF8000000001234));
    EXPECT_EQ(BitsOf(CloneExpression(*source)->value), 0xFFF8000000001234);
}

TEST(CloneExpression, LosesNothingWithoutMemory) {
    const ExpressionTree source = MakeDeepTree(DeepShape::RightDeep, 100, NodeKind::Pressure);
    for (int i = 0; i < 5; ++i) AddArgument(*source, MakeConstant(i));  // which no longer lie in the node
    for (std::size_t n = 1;; ++n) {
        const CAllocationCounter allocations;
        FailAllocation(n);
        try {
            CloneExpression(*source);
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(allocations.Left(), 0);
            continue;
        }
        FailAllocation(0);
        EXPECT_GT(n, 2u);  // the nodes, and the list of the first one's arguments
        break;
    }
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

TEST(ExpressionRef, LosesNothingWithoutMemory) {
    const ExpressionTree source = MakeDeepTree(DeepShape::RightDeep, 100, NodeKind::Pressure);
    for (std::size_t n = 1;; ++n) {
        ExpressionTree tree = CloneExpression(*source);
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
            const ExpressionRef copy(CloneExpression(*tree));
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
