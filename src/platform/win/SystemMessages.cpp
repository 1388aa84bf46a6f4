// SPDX-License-Identifier: MIT
// The system's message table. Inserts are left alone, since no arguments come with a result code; the text lies in a
// buffer here rather than in one of the system's, which would have to be given back.

#include "platform/SystemMessages.h"

#include <windows.h>

namespace reka {

bool FindSystemMessage(HRESULT code, std::u16string& text) {
    constexpr DWORD bufferLength = 1024;
    constexpr DWORD userDefaultLanguage = 1024;
    wchar_t buffer[bufferLength];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        static_cast<DWORD>(code), userDefaultLanguage, buffer, bufferLength, nullptr);
    text.assign(reinterpret_cast<const char16_t*>(buffer), length);
    return length > 0;
}

}  // namespace reka
