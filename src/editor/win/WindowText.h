// SPDX-License-Identifier: MIT
// The texts of windows and of the system's functions. All are of any length.

#pragma once

#include <string>

#include <windows.h>

namespace reka {

/// The text as the system's functions take it.
inline const wchar_t* SystemText(const char16_t* text) {
    return reinterpret_cast<const wchar_t*>(text);
}
inline const wchar_t* SystemText(const std::u16string& text) {
    return SystemText(text.c_str());
}

/// The text of a window.
std::u16string WindowText(HWND window);

constexpr int anyTextLength = 0x7FFFFFFE;  // characters: the most that a field can be told to take

/// Lets an edit field take as much as its record does, rather than what the system lets a user type by default.
void LiftLengthLimit(HWND field);

}  // namespace reka
