// SPDX-License-Identifier: MIT
// The three expressions of the selected reaction, as the reactions page shows them.

#include <gtest/gtest.h>

#include "editor/ReactionPage.h"
#include "support/Builders.h"
#include "support/FakeEditorUi.h"

namespace reka::test {
namespace {

TEST(ReactionTexts, AreThoseOfTheSelectedReaction) {
    const auto definition = MakePackage({u"A"});
    CFakeEditorUi ui;
    CReactionPage page(*definition, ui);
    for (const ReactionExpression expression :
         {ReactionExpression::Rate, ReactionExpression::EquilibriumConstant, ReactionExpression::Heat}) {
        EXPECT_EQ(page.ExpressionText(expression), u"");  // there is no reaction
    }
    ReactionDefinition& reaction = AddKinetic(*definition, u"r", u"T");
    reaction.equilibriumConstantEquation = u"P";
    reaction.heatEquation = u"2*T";
    AddKinetic(*definition, u"s", u"3");
    page.Select(0);
    EXPECT_EQ(page.ExpressionText(ReactionExpression::Rate), u"T");
    EXPECT_EQ(page.ExpressionText(ReactionExpression::EquilibriumConstant), u"P");
    EXPECT_EQ(page.ExpressionText(ReactionExpression::Heat), u"2*T");
    page.Select(1);
    EXPECT_EQ(page.ExpressionText(ReactionExpression::Rate), u"3");
}

}  // namespace
}  // namespace reka::test
