// SPDX-License-Identifier: MIT
// How the programs beside the component read their files.

#pragma once

#include <cstdint>
#include <vector>

#include "platform/Files.h"

namespace packagetext {

/// What is in `file` from its current position to its end, or up to where reading fails, which the file
/// then tells. May throw std::bad_alloc.
std::vector<std::uint8_t> ReadWhole(reka::IFile& file);

}  // namespace packagetext
