// SPDX-License-Identifier: MIT
// Stored bytes put together by hand, field by field, without the code that they test.

#pragma once

#include <bit>
#include <cstdint>
#include <string_view>
#include <vector>

namespace reka::test {

class CStoredBytes {
public:
    CStoredBytes& U8(std::uint8_t value) {
        bytes.push_back(value);
        return *this;
    }
    CStoredBytes& U32(std::uint32_t value) {
        for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
        return *this;
    }
    CStoredBytes& F64(double value) { return Bits(std::bit_cast<std::uint64_t>(value)); }
    CStoredBytes& Bits(std::uint64_t value) {
        for (int i = 0; i < 8; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
        return *this;
    }
    /// A count of UTF-16 units, the units and a terminator; the count alone for an empty text.
    CStoredBytes& Wide(std::u16string_view text) {
        U32(static_cast<std::uint32_t>(text.size()));
        if (text.empty()) return *this;
        for (const char16_t unit : text)
            U8(static_cast<std::uint8_t>(unit & 0xFF)).U8(static_cast<std::uint8_t>(unit >> 8));
        return U8(0).U8(0);
    }
    /// A count of bytes, the bytes and a terminator; the count alone for an empty text.
    CStoredBytes& Narrow(std::string_view text) {
        U32(static_cast<std::uint32_t>(text.size()));
        if (text.empty()) return *this;
        for (const char character : text) U8(static_cast<std::uint8_t>(character));
        return U8(0);
    }
    CStoredBytes& Add(const CStoredBytes& other) {
        bytes.insert(bytes.end(), other.bytes.begin(), other.bytes.end());
        return *this;
    }

    std::vector<std::uint8_t> bytes;
};

}  // namespace reka::test
