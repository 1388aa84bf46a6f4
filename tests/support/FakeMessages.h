// Message boxes that a test answers and records.

#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "platform/UserMessages.h"
#include "platform/Utf8.h"

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
        if (onShow) onShow();
        return (message.style & messagestyle::yesNo) != 0 ? answer : MessageAnswer::Ok;
    }

    std::vector<UserMessage> shown;
    MessageAnswer answer = MessageAnswer::No;
    std::function<void()> onShow;  // what happens while a box is open

private:
    IUserMessages* before;
};

}  // namespace test
}  // namespace reka
