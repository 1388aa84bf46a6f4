// SPDX-License-Identifier: MIT
// Every read comes down to one that compares the size with what is left and only then moves. Sizes are summed in 64
// bits, so no length word makes them wrap, not even where size_t has 32. Numbers are put together byte by byte: they
// may lie at any address, and their order is that of the form on every machine.

#include "persistence/ByteReader.h"

#include <bit>
#include <cstring>
#include <new>
#include <string_view>

#include "platform/CodePage.h"

namespace reka {

bool CByteReader::ReadBytes(std::size_t size, std::span<const std::uint8_t>& bytes) {
    if (rest.size() < size) return false;
    bytes = rest.first(size);
    rest = rest.subspan(size);
    return true;
}

bool CByteReader::ReadU8(std::uint8_t& value) {
    std::span<const std::uint8_t> byte;
    if (!ReadBytes(1, byte)) return false;
    value = byte[0];
    return true;
}

bool CByteReader::ReadU32(std::uint32_t& value) {
    std::span<const std::uint8_t> bytes;
    if (!ReadBytes(4, bytes)) return false;
    value = 0;
    for (std::size_t i = 4; i-- > 0;) value = value << 8 | bytes[i];
    return true;
}

bool CByteReader::ReadI32(std::int32_t& value) {
    std::uint32_t word = 0;
    if (!ReadU32(word)) return false;
    value = static_cast<std::int32_t>(word);
    return true;
}

bool CByteReader::ReadF64(double& value) {
    std::span<const std::uint8_t> bytes;
    if (!ReadBytes(8, bytes)) return false;
    std::uint64_t bits = 0;
    for (std::size_t i = 8; i-- > 0;) bits = bits << 8 | bytes[i];
    value = std::bit_cast<double>(bits);
    return true;
}

bool CByteReader::ReadWideText(CBstr& text) {
    text.Reset();
    std::uint32_t length = 0;
    if (!ReadU32(length)) return false;
    if (length == 0) return true;
    const std::uint64_t size = std::uint64_t{2} * length + 2;
    std::span<const std::uint8_t> bytes;
    if (size > rest.size() || !ReadBytes(static_cast<std::size_t>(size), bytes)) return false;
    CBstr read(SysAllocStringLen(nullptr, length));
    if (read.IsAbsent()) throw std::bad_alloc();
    for (std::size_t i = 0; i < length; ++i) {
        read.Get()[i] = static_cast<OLECHAR>(bytes[2 * i] | bytes[2 * i + 1] << 8);
    }
    text = std::move(read);
    return true;
}

bool CByteReader::ReadNarrowText(std::u16string& text) {
    text.clear();
    std::uint32_t length = 0;
    if (!ReadU32(length)) return false;
    if (length == 0) return true;
    const std::uint64_t size = std::uint64_t{length} + 1;
    std::span<const std::uint8_t> bytes;
    if (size > rest.size() || !ReadBytes(static_cast<std::size_t>(size), bytes)) return false;
    const std::string_view stored(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    text = WideText(stored.substr(0, stored.find('\0')));
    return true;
}

}  // namespace reka
