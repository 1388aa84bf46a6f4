// SPDX-License-Identifier: MIT
// A history that is begun anew: nothing of the text before can be taken back or done again.

#include <gtest/gtest.h>

#include "editor/TextHistory.h"

namespace reka::test {
namespace {

TEST(TextHistoryStart, ForgetsTheStepsOfTheTextBefore) {
    CTextHistory history;
    history.Start(u"a");
    history.Change(u"ab", 2);
    history.Change(u"a", 1);
    ASSERT_TRUE(history.CanUndo());
    history.Start(u"c");
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.CanRedo());
    history.Change(u"cd", 2);
    EXPECT_TRUE(history.CanUndo());
    history.Undo();
    EXPECT_FALSE(history.CanUndo());
    EXPECT_TRUE(history.CanRedo());
    history.Start(u"e");
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.CanRedo());
}

}  // namespace
}  // namespace reka::test
