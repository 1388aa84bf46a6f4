// Nodes out of one allocation, and their trees, which are freed whichever way they were made.

#include "expression/tree/NodeSource.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "expression/ExpressionBuilders.h"
#include "expression/tree/ExpressionRef.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

TEST(NodeSource, MakesAsManyNodesAsAreAskedFor) {
    for (const std::size_t expectedCount : {0U, 1U, 7U, 1000U, 70000U}) {
        const CAllocationCounter allocations;
        {
            std::vector<ExpressionTree> nodes;
            std::set<const ExpressionNode*> places;
            CNodeSource source(expectedCount);
            for (std::int32_t i = 0; i < 71000; ++i) {
                nodes.push_back(source.Make(NodeKind::Activity));
                nodes.back()->compoundIndex = i;
                places.insert(nodes.back().get());
            }
            EXPECT_EQ(places.size(), nodes.size());
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

TEST(NodeSource, TakesOneAllocationForTheNodesExpected) {
    CNodeSource source(100);
    std::vector<ExpressionTree> nodes(101);
    const CAllocationCounter allocations;
    for (std::size_t i = 0; i < 100; ++i) nodes[i] = source.Make(NodeKind::Pressure);
    EXPECT_EQ(allocations.Count(), 1U);
    nodes[100] = source.Make(NodeKind::Pressure);
    EXPECT_EQ(allocations.Count(), 2U);
}

TEST(NodeSource, LeavesItsNodesToTheirOwners) {
    const CAllocationCounter allocations;
    {
        ExpressionTree first;
        ExpressionTree last;
        {
            CNodeSource source(3);
            first = source.Make(NodeKind::Pressure);
            const ExpressionTree middle = source.Make(NodeKind::Temperature);
            last = source.Make(NodeKind::Pressure);
        }
        first.reset();
        EXPECT_GT(allocations.Left(), 0);  // the block lives with its last node
        EXPECT_EQ(last->kind, NodeKind::Pressure);
    }
    EXPECT_EQ(allocations.Left(), 0);
}

TEST(NodeSource, LosesNothingWithoutMemory) {
    for (std::size_t n = 1; n <= 3; ++n) {
        const CAllocationCounter allocations;
        {
            CNodeSource source(1);
            std::vector<ExpressionTree> nodes;
            nodes.reserve(40);
            FailAllocation(n);
            bool hasFailed = false;
            for (int i = 0; i < 40; ++i) {
                try {
                    nodes.push_back(source.Make(NodeKind::Pressure));
                } catch (const std::bad_alloc&) {
                    hasFailed = true;
                }
            }
            FailAllocation(0);
            EXPECT_TRUE(hasFailed) << n;
            EXPECT_EQ(nodes.size(), 39U);
        }
        EXPECT_EQ(allocations.Left(), 0);
    }
}

/// A tree of three nodes from `source`.
ExpressionTree MakeSum(CNodeSource& source) {
    ExpressionTree sum = source.Make(NodeKind::Addition);
    AddArgument(*sum, source.Make(NodeKind::Pressure));
    AddArgument(*sum, source.Make(NodeKind::Temperature));
    return sum;
}

TEST(TreeSurvey, CountsNodesAndConstants) {
    const ExpressionTree tree =
        MakeNode(NodeKind::Addition, MakeConstant(1), MakeNode(NodeKind::Exp, MakeNode(NodeKind::Temperature)));
    const TreeSurvey survey = SurveyTree(*tree);
    EXPECT_TRUE(survey.isSound);
    EXPECT_FALSE(survey.isWholeBlock);
    EXPECT_EQ(survey.nodeCount, 4U);
    EXPECT_EQ(survey.constantCount, 1U);
}

TEST(TreeSurvey, TellsATreeThatIsAWholeBlock) {
    ExpressionTree tree;
    {
        CNodeSource source(8);
        tree = MakeSum(source);
        EXPECT_FALSE(SurveyTree(*tree).isWholeBlock);  // more nodes may come
    }
    EXPECT_TRUE(SurveyTree(*tree).isWholeBlock);
    EXPECT_TRUE(SurveyTree(*CloneExpression(*tree)).isWholeBlock);
}

TEST(TreeSurvey, TellsATreeThatIsMoreOrLessThanABlock) {
    CNodeSource others(1);
    ExpressionTree stray;
    ExpressionTree withStray;
    ExpressionTree joined;
    ExpressionTree grown;
    ExpressionTree wide;
    {
        CNodeSource source(8);
        withStray = MakeSum(source);
        stray = source.Make(NodeKind::Pressure);
    }
    {
        CNodeSource source(8);
        joined = source.Make(NodeKind::Negation);
        AddArgument(*joined, others.Make(NodeKind::Pressure));
    }
    {
        CNodeSource source(2);
        grown = MakeSum(source);
    }
    {
        CNodeSource source(8);
        wide = source.Make(NodeKind::ExpressionList);
        for (int i = 0; i < 3; ++i) AddArgument(*wide, source.Make(NodeKind::Pressure));
    }
    for (const ExpressionTree* tree : {&withStray, &joined, &grown, &wide}) {
        EXPECT_FALSE(SurveyTree(**tree).isWholeBlock);
    }
}

// However the nodes lie, the owner of a finished tree frees all of them and nothing else.
TEST(ExpressionRef, FreesTreesOfAnyOrigin) {
    const CAllocationCounter allocations;
    {
        CNodeSource others(1);
        CNodeSource source(4);
        const ExpressionRef whole(CloneExpression(*MakeSum(source)));
        const ExpressionRef shared(MakeSum(source));
        ExpressionTree joined = source.Make(NodeKind::Multiplication);
        AddArgument(*joined, MakeConstant(2));
        AddArgument(*joined, MakeSum(others));
        const ExpressionRef mixed(std::move(joined));
        ExpressionTree wide = MakeNode(NodeKind::Max, MakeConstant(1), MakeConstant(2), MakeConstant(3));
        const ExpressionRef unsound(CloneExpression(*wide));
        EXPECT_FALSE(unsound.survey.isSound);
    }
    EXPECT_EQ(allocations.Left(), 0);
}

}  // namespace
}  // namespace reka::test
