// SPDX-License-Identifier: MIT
// Both directions go code point by code point, and everything malformed costs one replacement character and no more: a
// reader that gave up would lose a document for a byte. A bad sequence loses its first byte alone, so whatever good
// text follows is still read. The bytes go to a function that takes them, since one caller gathers them in a string and
// another must do without memory.

#include "text/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace reka {

namespace {

constexpr char32_t replacement = 0xFFFD;

/// Takes one code point from the front of `bytes`, which isn't empty. A malformed sequence takes one byte.
char32_t TakeCodePoint(std::string_view& bytes) {
    const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    const std::uint8_t lead = byteAt(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    char32_t point = length < 2 ? lead : lead & (0x7FU >> length);
    bool good = length > 0 && length <= bytes.size();
    for (std::size_t i = 1; good && i < length; ++i) {
        good = (byteAt(i) & 0xC0U) == 0x80;
        point = point << 6 | (byteAt(i) & 0x3FU);
    }
    const bool overlong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
    if (!good || overlong || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) {
        bytes.remove_prefix(1);
        return replacement;
    }
    bytes.remove_prefix(length);
    return point;
}

/// Hands the bytes of a code point to `append`.
template <class Append>
void AppendUtf8(char32_t point, const Append& append) {
    if (point < 0x80) {
        append(static_cast<char>(point));
        return;
    }
    const int trailing = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    const unsigned lead = trailing == 1 ? 0xC0 : trailing == 2 ? 0xE0 : 0xF0;
    append(static_cast<char>(lead | point >> (6 * trailing)));
    for (int i = trailing - 1; i >= 0; --i) append(static_cast<char>(0x80U | (point >> (6 * i) & 0x3FU)));
}

/// Hands the bytes of a text to `append`.
template <class Append>
void ConvertToUtf8(std::u16string_view text, const Append& append) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t point = text[i];
        const bool high = point >= 0xD800 && point <= 0xDBFF;
        const bool paired = high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
        if (paired) {
            point = 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00U);
        } else if (point >= 0xD800 && point <= 0xDFFF) {
            point = replacement;
        }
        AppendUtf8(point, append);
    }
}

}  // namespace

std::u16string Utf16FromUtf8(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const char32_t point = TakeCodePoint(bytes);
        if (point < 0x10000) {
            text += static_cast<char16_t>(point);
        } else {
            text += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
            text += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
        }
    }
    return text;
}

std::string Utf8FromUtf16(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    ConvertToUtf8(text, [&](char byte) { bytes += byte; });
    return bytes;
}

std::size_t WriteUtf8(std::u16string_view text, std::span<char> buffer) noexcept {
    std::size_t size = 0;
    ConvertToUtf8(text, [&](char byte) {
        if (size < buffer.size()) buffer[size++] = byte;
    });
    if (size < buffer.size()) buffer[size] = '\0';
    return size;
}

}  // namespace reka
