// SPDX-License-Identifier: MIT
// Messages where there are no boxes: to standard error, without anybody to answer. A program that waits for an answer
// nobody can give would hang, so a question gets the answer that changes least. The text is converted part by part on
// the stack, as it may be what tells that memory has run out.

#include "platform/UserMessages.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "text/Utf8.h"

namespace reka {

namespace {

/// Nothing here takes memory: that there is none may be what the message says.
void Print(std::u16string_view text) {
    constexpr std::size_t largestPart = 128;
    char bytes[largestPart * utf8BytesPerUnit + 1];
    while (!text.empty()) {
        std::size_t units = std::min(text.size(), largestPart);
        const bool isInPair = units < text.size() && text[units - 1] >= 0xD800 && text[units - 1] <= 0xDBFF;
        if (isInPair) --units;
        std::fwrite(bytes, 1, WriteUtf8(text.substr(0, units), bytes), stderr);
        text.remove_prefix(units);
    }
}

MessageAnswer AnswerTo(std::uint32_t style) {
    switch (style & messagestyle::buttons) {
        case messagestyle::ok:
            return MessageAnswer::Ok;
        case messagestyle::yesNo:
            return MessageAnswer::No;
        default:
            return MessageAnswer::Cancel;
    }
}

class CStandardErrorMessages final : public IUserMessages {
public:
    MessageAnswer Show(const UserMessage& message) noexcept override {
        const MessageAnswer answer = AnswerTo(message.style);
        Print(message.title);
        Print(u" ");
        Print(message.text);
        if (answer == MessageAnswer::No) Print(u" (answered no)");
        if (answer == MessageAnswer::Cancel) Print(u" (cancelled)");
        Print(u"\n");
        return answer;
    }
};

}  // namespace

IUserMessages& SystemMessageBoxes() {
    static CStandardErrorMessages messages;
    return messages;
}

}  // namespace reka
