// SPDX-License-Identifier: MIT
// The system's message boxes. Styles and answers are numbered as the system numbers them, so nothing is translated.

#include "platform/UserMessages.h"

#include <windows.h>

namespace reka {

namespace {

class CMessageBoxes final : public IUserMessages {
public:
    MessageAnswer Show(const UserMessage& message) noexcept override {
        const HWND owner = message.owner == MessageOwner::ActiveWindow ? GetActiveWindow() : nullptr;
        return static_cast<MessageAnswer>(MessageBoxW(owner, reinterpret_cast<const wchar_t*>(message.text.c_str()),
                                                      reinterpret_cast<const wchar_t*>(message.title.c_str()),
                                                      message.style));
    }
};

// Not local to its function: the runtime's guard would hold handles that stay when the module is unloaded.
CMessageBoxes boxes;

}  // namespace

IUserMessages& SystemMessageBoxes() {
    return boxes;
}

}  // namespace reka
