// SPDX-License-Identifier: MIT
// What a property bag answers, as bytes: the input of the bag's fuzzer, and the form of its seeds. A first byte tells
// whether there is an error log (odd) or none. The answers follow in the order in which a package asks for its entries,
// which is the order in which it writes them. Each is its kind in one byte, counted round, and behind it
//
//     for a text     its length in two bytes, with the highest bit set for an absent one; its characters, a byte each
//     for an array   its lower bound in a byte with a sign, the number of its elements in a byte; texts or doubles
//
// Behind the end of the bytes every answer fails.

#pragma once

#include <cstdint>

namespace reka::fuzz {

enum class BagAnswer : std::uint8_t {
    Fails,
    Empty,
    Integer,
    Text,
    Texts,
    Numbers,
    TextsOfTwoDimensions,
    NumbersSaidToBeTexts,
};
constexpr std::uint8_t bagAnswerCount = 8;

constexpr std::uint32_t absentTextBit = 0x8000;
constexpr std::uint32_t longestText = 0x7FFF;

}  // namespace reka::fuzz
