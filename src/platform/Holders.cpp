// SPDX-License-Identifier: MIT
// Strings of the platform, made and read. A BSTR may hold zero characters and may be absent; what the component keeps
// and compares ends at the first zero, so that every reader sees the same text.

#include "platform/Holders.h"

#include <new>

namespace reka {

static_assert(sizeof(OLECHAR) == sizeof(char16_t), "wide characters are UTF-16 code units on every platform");

std::u16string_view TextOf(const OLECHAR* text) {
    return text ? std::u16string_view(reinterpret_cast<const char16_t*>(text)) : std::u16string_view();
}

CBstr CBstr::Make(std::u16string_view characters) {
    CBstr made = TryMake(characters);
    if (made.IsAbsent()) throw std::bad_alloc();
    return made;
}

CBstr CBstr::TryMake(std::u16string_view characters) noexcept {
    if (characters.size() >= 0x7FFFFFFF) return CBstr();  // longer than a length can say
    const OLECHAR* source = characters.empty() ? nullptr : reinterpret_cast<const OLECHAR*>(characters.data());
    BSTR made = SysAllocStringLen(source, static_cast<UINT>(characters.size()));
    return CBstr(made);
}

std::u16string StringFromBstr(BSTR text) {
    return std::u16string(TextOf(text));
}

CBstr BstrFromString(std::u16string_view text) {
    return text.empty() ? CBstr() : CBstr::Make(text);
}

CBstr BstrFromString(BSTR text) {
    return BstrFromString(TextOf(text));
}

}  // namespace reka
