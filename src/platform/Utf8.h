// UTF-8, the encoding of text outside the component, to and from its wide text.

#pragma once

#include <string>
#include <string_view>

namespace reka {

/// Malformed bytes become U+FFFD.
std::u16string Utf16FromUtf8(std::string_view bytes);
/// An unpaired surrogate becomes U+FFFD.
std::string Utf8FromUtf16(std::u16string_view text);

}  // namespace reka
