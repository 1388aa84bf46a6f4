// SPDX-License-Identifier: MIT
// Bytes and numbers in hexadecimal digits.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "StoredPackage.h"

namespace rekatool {

std::string HexadecimalOf(std::span<const std::uint8_t> bytes);
/// False unless the text is pairs of digits and nothing else.
bool BytesOf(std::string_view text, Bytes& bytes);

/// "0x" and `digits` digits.
std::string HexadecimalNumber(std::uint64_t number, int digits);
/// False unless the text is "0x" and up to `digits` digits, one at least.
bool ReadHexadecimalNumber(std::string_view text, int digits, std::uint64_t& number);

}  // namespace rekatool
