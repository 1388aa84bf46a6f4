// SPDX-License-Identifier: MIT
// Whether the component would read a stored block, without a word to its user.

#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace packagetext {

/// What the component's own reader makes of a block.
struct BlockReading {
    bool isReadable = false;
    std::string reason;  // why it isn't, in the reader's words: one line without an end
    std::string name;    // of a package that is readable, in UTF-8
};

/// Reads a block without keeping it. No message box appears, not even the one of a block of version 0. Not while a
/// package or a manager is at work.
BlockReading TryBlock(std::span<const std::uint8_t> block);

}  // namespace packagetext
