// SPDX-License-Identifier: MIT
// Lists for clients that read variants alone.

#pragma once

#include "platform/Automation.h"

namespace reka {

/// Turns a list of strings, doubles or whole numbers into a list of variants with the same bounds and values, the only
/// kind that a script can read. Anything else stays as it is, and so does a list for which there is no memory.
void MakeReadableForScripts(VARIANT& value) noexcept;

/// The other way round, for what a script passes: a list of variants becomes a list of strings if all of them are
/// strings, and of doubles if all are numbers, with the same bounds. Anything else stays as it is.
void MakeReadableForMembers(VARIANT& value) noexcept;

}  // namespace reka
