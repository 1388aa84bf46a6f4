// SPDX-License-Identifier: MIT
#include "platform/UserMessages.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/FakeMessages.h"

namespace reka::test {
namespace {

TEST(UserMessages, GoOverTheActiveWindowInTheStyleOfTheirKind) {
    CFakeMessages messages;
    messages.answer = MessageAnswer::Cancel;
    UserMessages().ShowError(u"It won't do");
    UserMessages().ShowWarning(u"It may not do", u"Warning:");
    EXPECT_FALSE(UserMessages().AskToContinue(u"Go on?", u"Question:"));
    messages.answer = MessageAnswer::Ok;
    EXPECT_TRUE(UserMessages().AskToContinue(u"Go on?", u"Question:"));
    messages.answer = MessageAnswer::Yes;
    const std::uint32_t style = messagestyle::yesNo | messagestyle::iconQuestion | messagestyle::secondButtonIsDefault;
    EXPECT_EQ(UserMessages().ShowMessage(u"Delete it?", u"Delete:", style), MessageAnswer::Yes);
    // The numbers are the platform's.
    const std::vector<UserMessage> expected = {{u"It won't do", u"Error:", 16, MessageOwner::ActiveWindow},
                                               {u"It may not do", u"Warning:", 48, MessageOwner::ActiveWindow},
                                               {u"Go on?", u"Question:", 49, MessageOwner::ActiveWindow},
                                               {u"Go on?", u"Question:", 49, MessageOwner::ActiveWindow},
                                               {u"Delete it?", u"Delete:", 292, MessageOwner::ActiveWindow}};
    EXPECT_EQ(messages.shown, expected);
}

}  // namespace
}  // namespace reka::test
