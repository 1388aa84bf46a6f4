// SPDX-License-Identifier: MIT
// The code page of the running thread, by the system's own conversions: what an older document was written with is what
// its user's system reads it with. Each conversion runs twice, once for the size. A text too long for the counts of
// these calls is treated like one that there is no memory for.

#include "platform/CodePage.h"

#include <windows.h>

#include <climits>
#include <new>

namespace reka {

std::string NarrowText(std::u16string_view text) {
    if (text.empty()) return {};
    if (text.size() > INT_MAX) throw std::bad_alloc();
    const auto* const characters = reinterpret_cast<const wchar_t*>(text.data());
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_THREAD_ACP, 0, characters, length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_THREAD_ACP, 0, characters, length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::u16string WideText(std::string_view bytes) {
    if (bytes.empty()) return {};
    if (bytes.size() > INT_MAX) throw std::bad_alloc();
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(CP_THREAD_ACP, 0, bytes.data(), size, nullptr, 0);
    std::u16string text(static_cast<std::size_t>(length), u'\0');
    MultiByteToWideChar(CP_THREAD_ACP, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(text.data()), length);
    return text;
}

}  // namespace reka
