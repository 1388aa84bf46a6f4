// SPDX-License-Identifier: MIT
// The pool of a parse.

#include "expression/tree/ExpressionPool.h"

#include <gtest/gtest.h>

#include <vector>

#include "expression/ExpressionBuilders.h"

namespace reka::test {
namespace {

TEST(ExpressionPool, KnowsWhatItWasGiven) {
    const ExpressionTree first = MakeConstant(1);
    const ExpressionTree second = MakeConstant(2);
    ExpressionPool pool;
    pool.PoolAdd(*first);
    EXPECT_EQ(&pool.FirstNode(), first.get());
    pool.PoolAdd(*second);
    EXPECT_EQ(pool.NodeCount(), 2U);
    pool.PoolRemove(*first);
    EXPECT_EQ(&pool.FirstNode(), second.get());
    pool.PoolRemove(*first);
    EXPECT_EQ(pool.NodeCount(), 1U);
    pool.PoolRemove(*second);
    EXPECT_EQ(pool.NodeCount(), 0U);
}

TEST(ExpressionPool, ForgetsNodesInAnyOrder) {
    std::vector<ExpressionTree> nodes;
    ExpressionPool pool;
    for (int i = 0; i < 100; ++i) {
        nodes.push_back(MakeConstant(i));
        pool.PoolAdd(*nodes.back());
    }
    for (const std::size_t i : {99U, 0U, 50U, 98U}) pool.PoolRemove(*nodes[i]);
    double sum = 0;
    for (; pool.NodeCount() > 0; pool.PoolRemove(pool.FirstNode())) sum += pool.FirstNode().value;
    EXPECT_EQ(sum, 4950 - 99 - 50 - 98);
}

TEST(ExpressionPool, IsEmptyWhenItIsCleared) {
    const ExpressionTree node = MakeConstant(1);
    ExpressionPool pool;
    pool.PoolAdd(*node);
    pool.PoolClear();
    EXPECT_EQ(pool.NodeCount(), 0U);
}

}  // namespace
}  // namespace reka::test
