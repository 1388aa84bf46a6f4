// SPDX-License-Identifier: MIT
// Reading the stored form of a definition, whose layout WriteStoredDefinition.h has.

#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "records/Definition.h"

namespace reka {

/// Fills `definition`, which was just made, from a block. Values are taken as stored; texts and trees aren't compared
/// with each other, and no text is parsed but a corrected rate of version 0. Each such block is told to the user, once,
/// in a message box.
///
/// False: `errorText` holds the reason, and `definition` what had been read by then, which is to be thrown away. Throws
/// nothing.
bool ReadStoredDefinition(ReactionPackDefinition& definition, std::span<const std::uint8_t> block,
                          std::u16string& errorText) noexcept;

}  // namespace reka
