// SPDX-License-Identifier: MIT
// Messages where there are no boxes.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "platform/UserMessages.h"
#include "support/AllocationCounter.h"
#include "text/Utf8.h"

namespace reka::test {
namespace {

/// Sends standard error to a file while it lives.
class CStandardError {
public:
    CStandardError() : file(std::tmpfile()), before(dup(STDERR_FILENO)) {
        std::fflush(stderr);
        dup2(fileno(file), STDERR_FILENO);
    }
    ~CStandardError() {
        std::fflush(stderr);
        dup2(before, STDERR_FILENO);
        close(before);
        std::fclose(file);
    }
    CStandardError(const CStandardError&) = delete;
    CStandardError& operator=(const CStandardError&) = delete;

    std::string Text() {
        std::fflush(stderr);
        std::rewind(file);
        std::string text(10000, '\0');
        text.resize(std::fread(text.data(), 1, text.size(), file));
        return text;
    }

private:
    std::FILE* file;
    int before;
};

struct ShownCase {
    std::uint32_t style;
    MessageAnswer answer;
    const char* end;  // behind the text
};

const ShownCase shownCases[] = {
    {messagestyle::ok | messagestyle::iconError, MessageAnswer::Ok, "\n"},
    {messagestyle::ok | messagestyle::iconInformation, MessageAnswer::Ok, "\n"},
    {messagestyle::yesNo | messagestyle::iconQuestion, MessageAnswer::No, " (answered no)\n"},
    {messagestyle::okCancel | messagestyle::iconExclamation, MessageAnswer::Cancel, " (cancelled)\n"},  // 49
    {0x03, MessageAnswer::Cancel, " (cancelled)\n"},  // yes, no and cancel
};

TEST(StandardErrorMessages, AreAnsweredNoOrCancelled) {
    for (const ShownCase& row : shownCases) {
        std::string shown;
        MessageAnswer answer = MessageAnswer::None;
        {
            CStandardError standardError;
            answer = SystemMessageBoxes().Show({u"A text,\r\nof two lines", u"Title:", row.style, MessageOwner::None});
            shown = standardError.Text();
        }
        EXPECT_EQ(answer, row.answer) << row.style;
        EXPECT_EQ(shown, "Title: A text,\r\nof two lines" + std::string(row.end)) << row.style;
    }
}

TEST(StandardErrorMessages, AreWholeWhateverTheirLength) {
    // Characters of one to four bytes, so that parts end between the halves of a pair as well.
    std::u16string text;
    for (int i = 0; i < 200; ++i) text += u"a\u00E9\u4E2D\U0001F600\xD800";
    for (std::size_t start = 0; start < 6; ++start) {
        const UserMessage message = {text.substr(start), u"", 0, MessageOwner::None};
        std::string shown;
        {
            CStandardError standardError;
            SystemMessageBoxes().Show(message);
            shown = standardError.Text();
        }
        EXPECT_EQ(shown, " " + Utf8FromUtf16(message.text) + "\n") << start;
    }
}

TEST(StandardErrorMessages, TakeNoMemory) {
    const UserMessage message = {u"A text that is too long to be kept without memory", u"A title that is as well",
                                 messagestyle::yesNo, MessageOwner::None};
    CStandardError standardError;
    SystemMessageBoxes();
    const CAllocationCounter counter;
    FailAllocation(1);
    const MessageAnswer answer = SystemMessageBoxes().Show(message);
    FailAllocation(0);
    EXPECT_EQ(counter.Count(), 0U);
    EXPECT_EQ(answer, MessageAnswer::No);
    EXPECT_EQ(standardError.Text(),
              "A title that is as well A text that is too long to be kept without memory (answered no)\n");
}

}  // namespace
}  // namespace reka::test
