// SPDX-License-Identifier: MIT
// The actions of the grammars, without a grammar.

#include "expression/parse/GrammarActions.h"

#include <gtest/gtest.h>

#include "expression/ExpressionBuilders.h"
#include "expression/parse/CheckExpression.h"
#include "support/AllocationCounter.h"

namespace reka::test {
namespace {

class GrammarActions : public testing::Test {
protected:
    std::u16string errorText;
    ParseErrors errors{errorText};
    CGrammarActions actions{0, errors};
};

TEST_F(GrammarActions, FailWithASecondNodeLeft) {
    actions.MakeNode(NodeKind::Temperature);
    actions.MakeNode(NodeKind::Pressure);
    EXPECT_EQ(actions.TakeTree(), nullptr);
    EXPECT_EQ(errorText, u"internal error: more than one expression remaining after parsing is finished\r\n");
}

TEST_F(GrammarActions, GiveTheOneNodeThatIsLeft) {
    ExpressionNode* const product = actions.MakeOperation(NodeKind::Multiplication, actions.MakeConstant(2),
                                                          actions.MakeCompoundLeaf(NodeKind::Activity, 3));
    actions.MakeOperation(NodeKind::Negation, product);
    EXPECT_EQ(Show(actions.TakeTree().get()), "5(3(2,33:3))");
    EXPECT_EQ(errorText, u"");
}

TEST_F(GrammarActions, GiveNoTreeWithoutNodes) {
    EXPECT_EQ(actions.TakeTree(), nullptr);
    EXPECT_EQ(errorText, u"");
}

TEST_F(GrammarActions, GiveNoTreeAfterAnError) {
    actions.MakeNode(NodeKind::Temperature);
    errors.ReportParseError(u"wrong");
    EXPECT_EQ(actions.TakeTree(), nullptr);
    EXPECT_EQ(errorText, u"wrong\r\n");
}

TEST_F(GrammarActions, MakeNothingOnceTheParseHasFailed) {
    ExpressionNode* const list =
        actions.MakeOperation(NodeKind::ExpressionList, actions.MakeNode(NodeKind::Temperature));
    errors.ReportParseError(u"wrong");
    EXPECT_EQ(actions.MakeNode(NodeKind::Pressure), nullptr);
    EXPECT_EQ(actions.MakeConstant(1), nullptr);
    EXPECT_EQ(actions.MakeCompoundLeaf(NodeKind::Activity, 1), nullptr);
    EXPECT_EQ(actions.AppendArgument(list, nullptr), nullptr);
    EXPECT_EQ(actions.MakeFunction(0, list), nullptr);
    EXPECT_EQ(actions.MakeOperation(NodeKind::Addition, list, nullptr), nullptr);
    actions.ReportGrammarError("worse");
    EXPECT_EQ(errorText, u"wrong\r\nworse\r\n");
}

TEST_F(GrammarActions, KeepAShortageOfMemoryToThemselves) {
    for (int i = 0; i < 8; ++i) actions.MakeNode(NodeKind::Temperature);  // all that the first block holds
    FailAllocation(1);
    EXPECT_EQ(actions.MakeNode(NodeKind::Pressure), nullptr);
    FailAllocation(0);
    EXPECT_TRUE(errors.isOutOfMemory);
    EXPECT_EQ(actions.MakeNode(NodeKind::Pressure), nullptr);
    actions.ReportGrammarError("nothing more is said");
    EXPECT_EQ(errorText, u"");
    EXPECT_EQ(actions.TakeTree(), nullptr);
}

TEST_F(GrammarActions, LeaveTheListOfAFunctionToTheCheck) {
    ExpressionNode* const list =
        actions.MakeOperation(NodeKind::ExpressionList, actions.MakeNode(NodeKind::Temperature));
    actions.AppendArgument(list, actions.MakeNode(NodeKind::Pressure));
    actions.MakeFunction(17, list);
    const ExpressionTree tree = actions.TakeTree();
    EXPECT_EQ(Show(tree.get()), "25(7(29,28))");
    const auto definition = MakeDefinitionOf({});
    CheckExpression(*tree, *definition, errorText);
    EXPECT_EQ(Show(tree.get()), "25(29,28)");
}

}  // namespace
}  // namespace reka::test
