// SPDX-License-Identifier: MIT
// A file is read until less comes than was asked for, and its size is never asked: a pipe has none, and a file that
// somebody writes to has another one a moment later.

#include "packagetext/ReadWhole.h"

namespace packagetext {

std::vector<std::uint8_t> ReadWhole(reka::IFile& file) {
    constexpr std::size_t part = std::size_t{1} << 20;
    std::vector<std::uint8_t> bytes;
    std::size_t got = part;
    while (got == part) {
        const std::size_t size = bytes.size();
        bytes.resize(size + part);
        got = file.Read(bytes.data() + size, part);
        bytes.resize(size + got);
    }
    return bytes;
}

}  // namespace packagetext
