// SPDX-License-Identifier: MIT
// The text of the readable form, as a person or a merge may have left it.

#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "PackageFile.h"

namespace rekatool {

/// Whether bytes may be the readable form: an object's brace comes first, and no zero byte, of which stored packages
/// are full, stands anywhere.
bool IsReadable(std::span<const std::uint8_t> bytes);

/// Parses such a text. False with the reason in `errorText`; also for a member that stands twice in its object, of
/// which one would be lost, and for a text of more nesting or larger objects than the form has, so that what copies
/// `content` may recurse. May throw std::bad_alloc.
bool ParseReadable(std::span<const std::uint8_t> bytes, Json& content, std::string& errorText);

}  // namespace rekatool
