// SPDX-License-Identifier: MIT
// Numbers go out byte by byte, so that the order of bytes is that of the form on every machine; the compilers make one
// store of it. A narrow text takes as many bytes as it has characters, whatever the code page makes of them: the count
// in front of it says so, and readers go by that.

#include "persistence/ByteWriter.h"

#include <bit>

#include "platform/CodePage.h"

namespace reka {

namespace {

/// A text ends at its first zero character.
std::u16string_view UpToZero(std::u16string_view text) {
    return text.substr(0, text.find(u'\0'));
}

}  // namespace

void CByteWriter::WriteU32(std::uint32_t value) {
    std::uint8_t bytes[4];
    for (std::size_t i = 0; i < sizeof bytes; ++i) bytes[i] = static_cast<std::uint8_t>(value >> 8 * i);
    block.insert(block.end(), bytes, bytes + sizeof bytes);
}

void CByteWriter::WriteF64(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    std::uint8_t bytes[8];
    for (std::size_t i = 0; i < sizeof bytes; ++i) bytes[i] = static_cast<std::uint8_t>(bits >> 8 * i);
    block.insert(block.end(), bytes, bytes + sizeof bytes);
}

void CByteWriter::WriteWideText(const CBstr& text) {
    const std::u16string_view characters = text.View();
    WriteU32(static_cast<std::uint32_t>(characters.size()));
    if (characters.empty()) return;
    for (const char16_t character : characters) {
        WriteU8(static_cast<std::uint8_t>(character & 0xFF));
        WriteU8(static_cast<std::uint8_t>(character >> 8));
    }
    WriteU8(0);
    WriteU8(0);
}

void CByteWriter::WriteNarrowText(std::u16string_view text) {
    const std::u16string_view characters = UpToZero(text);
    WriteNarrowBytes(characters.size(), NarrowText(characters));
}

void CByteWriter::WriteNarrowBytes(std::size_t length, std::string_view bytes) {
    WriteU32(static_cast<std::uint32_t>(length));
    if (length == 0) return;
    const std::string_view stored = bytes.substr(0, length + 1);
    block.insert(block.end(), stored.begin(), stored.end());
    block.resize(block.size() + length + 1 - stored.size());  // with zeros, of which the first is the terminator
}

void CByteCounter::WriteWideText(const CBstr& text) {
    const std::uint64_t length = text.View().size();
    size += length == 0 ? 4 : 2 * length + 6;
}

void CByteCounter::WriteNarrowText(std::u16string_view text) {
    const std::uint64_t length = UpToZero(text).size();
    size += length == 0 ? 4 : length + 5;
}

}  // namespace reka
