// The pool of a parse.

#include "expression/tree/ExpressionPool.h"

#include <gtest/gtest.h>

#include <vector>

#include "expression/ExpressionBuilders.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

TEST(ExpressionPool, HandsOutWhatItWasGiven) {
    ExpressionPool pool;
    const PoolSlot first = pool.PoolAdd(MakeConstant(1));
    const PoolSlot second = pool.PoolAdd(MakeConstant(2));
    EXPECT_EQ(Show(&pool.NodeAt(first)), "1");
    EXPECT_EQ(Show(pool.PoolRemove(first).get()), "1");
    EXPECT_EQ(Show(pool.PoolRemove(second).get()), "2");
    EXPECT_EQ(pool.FindNode(0), noSlot);
}

TEST(ExpressionPool, UsesFreeSlotsAgain) {
    ExpressionPool pool;
    std::vector<PoolSlot> slots;
    for (int i = 0; i < 10; ++i) slots.push_back(pool.PoolAdd(MakeConstant(i)));
    for (const int i : {3, 7, 0}) pool.PoolRemove(slots[static_cast<std::size_t>(i)]);
    for (const int i : {3, 7, 0}) EXPECT_LT(pool.PoolAdd(MakeConstant(i)), 10);
    EXPECT_EQ(pool.PoolAdd(MakeConstant(10)), 10);
    double sum = 0;
    for (PoolSlot slot = pool.FindNode(0); slot != noSlot; slot = pool.FindNode(slot + 1))
        sum += pool.NodeAt(slot).value;
    EXPECT_EQ(sum, 55);
}

TEST(ExpressionPool, DestroysWhatIsLeft) {
    const CAllocationCounter allocations;
    {
        ExpressionPool pool;
        pool.PoolAdd(MakeNode(NodeKind::Addition, MakeConstant(1), MakeConstant(2)));
        pool.PoolClear();
        EXPECT_EQ(pool.FindNode(0), noSlot);
        pool.PoolAdd(MakeNode(NodeKind::Negation, MakeConstant(1)));
    }
    EXPECT_EQ(allocations.Left(), 0);
}

}  // namespace
}  // namespace reka::test
