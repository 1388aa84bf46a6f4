// SPDX-License-Identifier: MIT
// What is told to the user and asked of him in a message: one seam for all of the system, from a file that can't be
// read to a field of a dialog that won't do, so that a test can answer and record.

#pragma once

#include <cstdint>
#include <string>

namespace reka {

/// Styles as the platform's message boxes number them; a box is the sum of its buttons and its icon.
namespace messagestyle {
constexpr std::uint32_t ok = 0x00;
constexpr std::uint32_t okCancel = 0x01;
constexpr std::uint32_t yesNo = 0x04;
constexpr std::uint32_t buttons = 0x0F;  // the part of a style that tells the buttons
constexpr std::uint32_t iconError = 0x10;
constexpr std::uint32_t iconQuestion = 0x20;
constexpr std::uint32_t iconExclamation = 0x30;
constexpr std::uint32_t iconInformation = 0x40;
constexpr std::uint32_t secondButtonIsDefault = 0x100;
/// Yes and No, with No for who only presses Enter: before something that can't be taken back.
constexpr std::uint32_t carefulQuestion = yesNo | iconQuestion | secondButtonIsDefault;
}  // namespace messagestyle

enum class MessageAnswer : std::int32_t { None = 0, Ok = 1, Cancel = 2, Yes = 6, No = 7 };  // the platform's values

/// Which window a box belongs to, and is modal for. The active one is that of the thread; to the editor's windows it is
/// the topmost of their dialogs, whether it is active or not.
enum class MessageOwner { None, ActiveWindow };

struct UserMessage {
    std::u16string text;
    std::u16string title;
    std::uint32_t style = 0;
    MessageOwner owner = MessageOwner::None;
    bool operator==(const UserMessage&) const = default;
};

class IUserMessages {
public:
    virtual ~IUserMessages() = default;
    /// Shows the message and waits for the answer; `None` if it couldn't be shown. Throws nothing.
    virtual MessageAnswer Show(const UserMessage& message) noexcept = 0;

    // The same over the active window. These may throw std::bad_alloc.

    MessageAnswer ShowMessage(const std::u16string& text, const std::u16string& title, std::uint32_t style) {
        return Show({text, title, style, MessageOwner::ActiveWindow});
    }
    /// The box of an input that won't do.
    void ShowError(const std::u16string& text) {
        ShowMessage(text, u"Error:", messagestyle::ok | messagestyle::iconError);
    }
    /// Tells the user something that ends nothing.
    void ShowWarning(const std::u16string& text, const std::u16string& caption) {
        ShowMessage(text, caption, messagestyle::ok | messagestyle::iconExclamation);
    }
    /// Asks for OK or Cancel; true for OK.
    bool AskToContinue(const std::u16string& text, const std::u16string& caption) {
        return ShowMessage(text, caption, messagestyle::okCancel | messagestyle::iconExclamation) == MessageAnswer::Ok;
    }
};

/// The system's message boxes. Where there are none a message goes to standard error, what has only an OK is
/// acknowledged, a question for yes or no is answered no, and everything else is cancelled.
IUserMessages& SystemMessageBoxes();

/// What messages go through in this process.
IUserMessages& UserMessages();

/// Puts another one in its place, or the system's again for null, and gives the one before. For tests and for programs
/// that tell their messages in their own way; not while a package or a manager is at work.
IUserMessages* ReplaceUserMessages(IUserMessages* replacement);

}  // namespace reka
