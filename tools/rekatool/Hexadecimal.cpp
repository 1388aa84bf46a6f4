// SPDX-License-Identifier: MIT
// Digits both ways, by the routines that know no locale. The readers take exactly what the writers give: no blanks, no
// signs, no odd digit, since a person who edits such a text has made a mistake that should be told.

#include "Hexadecimal.h"

#include <charconv>

namespace rekatool {

namespace {

constexpr char digitCharacters[] = "0123456789ABCDEF";

}  // namespace

std::string HexadecimalOf(std::span<const std::uint8_t> bytes) {
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::uint8_t byte : bytes) {
        text += digitCharacters[byte >> 4];
        text += digitCharacters[byte & 0xF];
    }
    return text;
}

bool BytesOf(std::string_view text, Bytes& bytes) {
    bytes.clear();
    if (text.size() % 2 != 0) return false;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        std::uint8_t byte = 0;
        const char* const end = text.data() + i + 2;
        const auto [stopped, error] = std::from_chars(text.data() + i, end, byte, 16);
        if (error != std::errc() || stopped != end) return false;
        bytes.push_back(byte);
    }
    return true;
}

std::string HexadecimalNumber(std::uint64_t number, int digits) {
    std::string text = "0x";
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) text += digitCharacters[number >> shift & 0xF];
    return text;
}

bool ReadHexadecimalNumber(std::string_view text, int digits, std::uint64_t& number) {
    if (text.size() < 3 || text.size() > 2 + static_cast<std::size_t>(digits) || text.substr(0, 2) != "0x")
        return false;
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data() + 2, end, number, 16);
    return error == std::errc() && stopped == end;
}

}  // namespace rekatool
