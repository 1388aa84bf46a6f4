// SPDX-License-Identifier: MIT
// What memory is like when nobody cleared it.

#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <vector>

namespace reka::test {

/// Frees blocks of `size` bytes that aren't zero, which the next allocations of that size are likely to get.
inline void LeaveGarbage(std::size_t size) {
    std::vector<std::unique_ptr<unsigned char[]>> blocks;
    for (int i = 0; i < 64; ++i) {
        blocks.emplace_back(new unsigned char[size]);
        std::memset(blocks.back().get(), 0x41, size);  // 2261634.5 as a double
    }
}

}  // namespace reka::test
