// SPDX-License-Identifier: MIT
// The cursor over stored bytes. It checks what is left before it moves, so its callers hold no arithmetic.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "platform/Holders.h"

namespace reka {

/// Reads little-endian, unaligned numbers and length-prefixed texts. A read that returns false leaves the cursor
/// anywhere and its target undefined; the block is to be given up. May throw std::bad_alloc, for no more memory than
/// the bytes left can fill.
class CByteReader {
public:
    explicit CByteReader(std::span<const std::uint8_t> bytes) : rest(bytes) {}

    std::size_t Remaining() const { return rest.size(); }

    /// The next bytes as they lie in the block.
    bool ReadBytes(std::size_t size, std::span<const std::uint8_t>& bytes);
    bool ReadU8(std::uint8_t& value);
    bool ReadU32(std::uint32_t& value);
    bool ReadI32(std::int32_t& value);
    bool ReadF64(double& value);  // bit for bit
    /// A count of UTF-16 code units, then that many and a terminator. A count of 0 has nothing behind it and gives an
    /// absent string.
    bool ReadWideText(CBstr& text);
    /// A count n of bytes, then n + 1 bytes in the thread's code page, of which the first zero ends the text. A count
    /// of 0 has nothing behind it.
    bool ReadNarrowText(std::u16string& text);

private:
    std::span<const std::uint8_t> rest;
};

}  // namespace reka
