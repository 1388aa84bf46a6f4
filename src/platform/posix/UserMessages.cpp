// Messages where there are no boxes: to standard error, without anybody to answer.

#include "platform/UserMessages.h"

#include <cstdio>
#include <string>

#include "platform/Utf8.h"

namespace reka {

namespace {

class CStandardErrorMessages final : public IUserMessages {
public:
    MessageAnswer Show(const UserMessage& message) noexcept override try {
        const bool isQuestion = (message.style & messagestyle::yesNo) != 0;
        std::string line = Utf8FromUtf16(message.title) + " " + Utf8FromUtf16(message.text);
        if (isQuestion) line += " (answered no)";
        line += "\n";
        std::fwrite(line.data(), 1, line.size(), stderr);
        return isQuestion ? MessageAnswer::No : MessageAnswer::Ok;
    } catch (...) {
        return MessageAnswer::None;
    }
};

}  // namespace

IUserMessages& SystemMessageBoxes() {
    static CStandardErrorMessages messages;
    return messages;
}

}  // namespace reka
