// SPDX-License-Identifier: MIT
// The cursor that writes stored bytes, and one that counts them, so that a layout is stated once for both.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/Holders.h"

namespace reka {

/// Appends little-endian, unaligned numbers and length-prefixed texts to `block`. Nothing is allocated as long as the
/// block has the capacity.
class CByteWriter {
public:
    explicit CByteWriter(std::vector<std::uint8_t>& target) : block(target) {}

    void WriteU8(std::uint8_t value) { block.push_back(value); }
    void WriteU32(std::uint32_t value);
    void WriteI32(std::int32_t value) { WriteU32(static_cast<std::uint32_t>(value)); }
    void WriteF64(double value);  // bit for bit
    /// See `CByteReader::ReadWideText`. An absent string is written like an empty one.
    void WriteWideText(const CBstr& text);
    /// See `CByteReader::ReadNarrowText`. The count is the number of wide characters, and each is taken to give one
    /// byte: where the code page needs more of them the end is cut off, where it needs fewer zeros fill up. May throw
    /// std::bad_alloc.
    void WriteNarrowText(std::u16string_view text);
    /// The same for a text of `length` characters that the code page has as `bytes`.
    void WriteNarrowBytes(std::size_t length, std::string_view bytes);

private:
    std::vector<std::uint8_t>& block;
};

/// Takes what a definition is written of, and counts the bytes that a CByteWriter would write.
class CByteCounter {
public:
    void WriteU32(std::uint32_t) { size += 4; }
    void WriteI32(std::int32_t) { size += 4; }
    void WriteF64(double) { size += 8; }
    void WriteWideText(const CBstr& text);
    void WriteNarrowText(std::u16string_view text);
    void Skip(std::uint64_t count) { size += count; }
    std::uint64_t Size() const { return size; }

private:
    std::uint64_t size = 0;
};

}  // namespace reka
