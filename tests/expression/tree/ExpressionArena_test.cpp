// SPDX-License-Identifier: MIT
// Arenas: where the nodes of a tree lie, and that all of them go with it.

#include "expression/tree/ExpressionArena.h"

#include <gtest/gtest.h>

#include <set>

#include "expression/ExpressionBuilders.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

TEST(ExpressionArena, MakesAsManyNodesAsAreAskedFor) {
    for (const std::size_t expectedCount : {0U, 1U, 7U, 1000U, 70000U}) {
        const CAllocationCounter allocations;
        {
            const ExpressionArena arena = MakeArena(expectedCount);
            std::vector<const ExpressionNode*> nodes;
            for (std::int32_t i = 0; i < 71000; ++i) {
                ExpressionNode& node = MakeNode(*arena, NodeKind::Activity);
                node.compoundIndex = i;
                nodes.push_back(&node);
            }
            EXPECT_EQ(std::set<const ExpressionNode*>(nodes.begin(), nodes.end()).size(), nodes.size());
            for (std::int32_t i = 0; i < 71000; ++i) {
                const ExpressionNode& node = *nodes[static_cast<std::size_t>(i)];
                ASSERT_EQ(node.kind, NodeKind::Activity);
                ASSERT_EQ(node.compoundIndex, i);
                ASSERT_EQ(node.argumentCount, 0);
                ASSERT_EQ(node.arguments, nullptr);
            }
        }
        EXPECT_EQ(allocations.Left(), 0) << expectedCount;
    }
}

TEST(ExpressionArena, TakesOneAllocationForTheNodesExpected) {
    const CAllocationCounter allocations;
    const ExpressionArena arena = MakeArena(100);
    for (int i = 0; i < 100; ++i) AddArgument(*arena, MakeNode(*arena, NodeKind::Negation), nullptr);
    EXPECT_EQ(allocations.Count(), 1U);
    EXPECT_LE(allocations.Bytes(), 100 * sizeof(ExpressionNode) + 64);
    MakeNode(*arena, NodeKind::Pressure);
    EXPECT_EQ(allocations.Count(), 2U);
}

TEST(ExpressionArena, LosesNothingWithoutMemory) {
    for (std::size_t n = 1; n <= 3; ++n) {
        const CAllocationCounter allocations;
        {
            const ExpressionArena arena = MakeArena(1);
            FailAllocation(n);
            int madeCount = 0;
            bool hasFailed = false;
            for (int i = 0; i < 40; ++i) {
                try {
                    MakeNode(*arena, NodeKind::Pressure);
                    ++madeCount;
                } catch (const std::bad_alloc&) {
                    hasFailed = true;
                }
            }
            FailAllocation(0);
            EXPECT_TRUE(hasFailed) << n;
            EXPECT_EQ(madeCount, 39);
        }
        EXPECT_EQ(allocations.Left(), 0);
    }
}

TEST(ExpressionArena, IsNotMadeWithoutMemory) {
    const CAllocationCounter allocations;
    FailAllocation(1);
    EXPECT_THROW(MakeArena(10), std::bad_alloc);
    EXPECT_EQ(allocations.Left(), 0);
}

TEST(DestroyExpression, PassesOverNothing) {
    DestroyExpression(nullptr);
}

TEST(DestroyExpression, FreesWhatHangsOnNothing) {
    const CAllocationCounter allocations;
    {
        ExpressionArena arena = MakeArena(2);
        ExpressionNode& root = MakeNode(*arena, NodeKind::Negation);
        AddArgument(*arena, root, &MakeNode(*arena, NodeKind::Pressure));
        for (int i = 0; i < 9; ++i) AddArgument(*arena, MakeNode(*arena, NodeKind::Addition), nullptr);
        const ExpressionTree tree = MakeTree(std::move(arena), root);
        EXPECT_EQ(Show(tree.get()), "5(28)");
        EXPECT_EQ(arena, nullptr);
    }
    EXPECT_EQ(allocations.Left(), 0);
}

}  // namespace
}  // namespace reka::test
