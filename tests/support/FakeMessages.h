// SPDX-License-Identifier: MIT
// Message boxes that a test answers and records.

#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "platform/UserMessages.h"
#include "text/Utf8.h"

namespace reka {

inline void PrintTo(const UserMessage& message, std::ostream* stream) {
    *stream << "\"" << Utf8FromUtf16(message.title) << "\" \"" << Utf8FromUtf16(message.text) << "\" style "
            << message.style << (message.owner == MessageOwner::ActiveWindow ? " over the active window" : "");
}

namespace test {

/// Takes the place of the system's message boxes while it lives. It acknowledges what isn't a question, and answers
/// questions with `answer`.
class CFakeMessages : public IUserMessages {
public:
    CFakeMessages() : before(ReplaceUserMessages(this)) {}
    ~CFakeMessages() override { ReplaceUserMessages(before); }
    CFakeMessages(const CFakeMessages&) = delete;
    CFakeMessages& operator=(const CFakeMessages&) = delete;

    MessageAnswer Show(const UserMessage& message) noexcept override {
        shown.push_back(message);
        if (operations) operations->push_back("box " + Utf8FromUtf16(message.title));
        if (onShow) onShow();
        if (onNextShow) std::exchange(onNextShow, nullptr)();
        return (message.style & messagestyle::buttons) != 0 ? answer : MessageAnswer::Ok;
    }

    std::vector<UserMessage> shown;
    MessageAnswer answer = MessageAnswer::No;
    std::function<void()> onShow;                    // what happens while a box is open
    std::function<void()> onNextShow;                // the same, for the next box alone
    std::vector<std::string>* operations = nullptr;  // a list that gets a line for each box, if one is given

private:
    IUserMessages* before;
};

}  // namespace test
}  // namespace reka
