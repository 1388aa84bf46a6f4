// SPDX-License-Identifier: MIT
// UTF-8, the encoding of text outside the component, to and from its wide text.

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace reka {

/// Malformed bytes become U+FFFD.
std::u16string Utf16FromUtf8(std::string_view bytes);
/// An unpaired surrogate becomes U+FFFD.
std::string Utf8FromUtf16(std::u16string_view text);

/// The most bytes that a UTF-16 code unit takes.
constexpr std::size_t utf8BytesPerUnit = 3;
/// Writes what `Utf8FromUtf16` gives into `buffer`, with a zero behind it. The number of bytes without that zero; all
/// of the buffer's size, which then holds nothing of use, if there is no room. Takes no memory.
std::size_t WriteUtf8(std::u16string_view text, std::span<char> buffer) noexcept;

}  // namespace reka
