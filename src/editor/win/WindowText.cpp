// SPDX-License-Identifier: MIT
// A text may change between the question for its length and the one for itself, as far as the system is concerned: what
// was copied counts.

#include "editor/win/WindowText.h"

namespace reka {

std::u16string WindowText(HWND window) {
    const int length = GetWindowTextLengthW(window);
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    const int copied = GetWindowTextW(window, reinterpret_cast<wchar_t*>(text.data()), length + 1);
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

void LiftLengthLimit(HWND field) {
    SendMessageW(field, EM_SETLIMITTEXT, anyTextLength, 0);
}

}  // namespace reka
